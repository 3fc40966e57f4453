#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"

#include <string_view>
#include <vector>

namespace Authoring {

/// Works out where files stand in a package: each under `folderName`, at its place relative to the first file's
/// directory. Links are resolved first, so that a file counts as being where it really is.
///
/// @param folderName  the package's folder, without separators
/// @param files       the first one is the primary file; the others lie in its directory or below
/// @return  one part name for each file, in their order
/// @throws RuntimeError  `files` is empty, or one of them lies outside the first one's directory tree
/// @throws std::filesystem::filesystem_error  the place of a file cannot be found out
std::vector<Kelvaris::System::IO::OpcPackaging::OpcPackagePartUri>
bundlePartUris(std::wstring_view folderName, const std::vector<Kelvaris::System::FilePath2>& files);

} // namespace Authoring
