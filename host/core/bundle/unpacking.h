#pragma once

#include "host/core/opc/package_data.h"
#include "kelvaris/system/file_path2.h"

namespace Kelvaris::System::IO::Bundle::detail {

/// Writes each content part of `package` to its path below `directory`; see `ContentBundle::unpack`.
OpcPackaging::detail::Result<> unpackContent(OpcPackaging::detail::PackageData& package, const FilePath2& directory);

} // namespace Kelvaris::System::IO::Bundle::detail
