#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The project's own files, by their paths from its root, with "/" between folders.
namespace SourceFiles {

std::filesystem::path root();

/// Headers and sources in the folder `top`, those below it included; none when there is no such folder.
std::vector<std::string> codeBelow(std::string_view top);

/// What git keeps; nothing where there is no git or no checkout.
std::optional<std::vector<std::string>> tracked();

/// All lines of a file; no lines for one that is no text.
std::vector<std::string> lines(const std::string& path);

} // namespace SourceFiles
