#pragma once

#include "host/core/opc/package_data.h"
#include "host/core/paths/disk/output_tree.h"
#include "kelvaris/system/file_path2.h"

#include <vector>

namespace Kelvaris::System::IO::Bundle::detail {

/// What unpacking writes: a destination for each part.
struct UnpackPlan
{
    std::vector<OpcPackaging::detail::PartPtr> parts;
    std::vector<Disk::OutputTree::Destination> destinations;
};

/// Each content part once, in the order of the relationships, with its place below any directory.
/// @return  opc 1 and 22 for a content relationship that leads to no part, opc 24 for a name that is no path
OpcPackaging::detail::Result<UnpackPlan> planUnpacking(OpcPackaging::detail::PackageData& package);

/// @return  opc 24 when the part's name is no path
OpcPackaging::detail::Result<Disk::OutputTree::Destination> destinationOf(const OpcPackaging::detail::PartRecord& part,
                                                                          const std::string& subject);

/// Writes each content part of `package` to its path below `directory`; see `ContentBundle::unpack`.
OpcPackaging::detail::Result<> unpackContent(OpcPackaging::detail::PackageData& package, const FilePath2& directory);

} // namespace Kelvaris::System::IO::Bundle::detail
