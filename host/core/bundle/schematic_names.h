#pragma once

#include <filesystem>
#include <string>

namespace Kelvaris::System::IO::Bundle::detail {

/// The part name of a schematic: its place below the root schematic's directory, or its own name in the folder of
/// schematics from elsewhere. It may turn out to be no valid part name.
///
/// @param file           canonical
/// @param rootDirectory  canonical
std::string schematicPartName(const std::filesystem::path& file, const std::filesystem::path& rootDirectory);

} // namespace Kelvaris::System::IO::Bundle::detail
