#pragma once

#include "host/core/bundle/bundle_package.h"

#include <string>
#include <string_view>

namespace Kelvaris::System::IO::Bundle::detail {

/// A part name with a number before its extension: "/schematics/stage-2.kvsch".
std::string numberedPartName(const std::string& partName, int number);

/// A new part of that name, or of the first numbered one when the name is taken by something else.
/// @return  opc 3, 14
Result<PartPtr> createNumberedPart(PackageData& package, const std::string& name, std::string_view mediaType,
                                   const PayloadPtr& bytes);

} // namespace Kelvaris::System::IO::Bundle::detail
