#include "tests/layout/source_files.h"

#include "tests/support/split.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

/// What `command` prints; nothing when it fails.
std::optional<std::string> outputOf(const char* command)
{
    FILE* const pipe = popen(command, "r");
    if (pipe == nullptr)
        return std::nullopt;
    std::string output;
    std::array<char, 4096> piece;
    while (const std::size_t size = fread(piece.data(), 1, piece.size(), pipe))
        output.append(piece.data(), size);
    if (pclose(pipe) != 0)
        return std::nullopt;
    return output;
}

} // namespace

fs::path SourceFiles::root()
{
    return HOLLERWICK_SOURCE_DIR;
}

std::vector<std::string> SourceFiles::codeBelow(std::string_view top)
{
    std::vector<std::string> paths;
    if (!fs::exists(root() / top))
        return paths;
    for (const auto& entry : fs::recursive_directory_iterator{root() / top}) {
        const fs::path extension = entry.path().extension();
        if (extension == ".h" || extension == ".cpp")
            paths.push_back(entry.path().lexically_relative(root()).generic_string());
    }
    return paths;
}

std::optional<std::vector<std::string>> SourceFiles::tracked()
{
    const fs::path before = fs::current_path();
    fs::current_path(root());
    const auto output = outputOf("git ls-files -z 2>/dev/null");
    fs::current_path(before);
    if (!output || output->empty())
        return std::nullopt;
    return split(*output, '\0');
}

std::vector<std::string> SourceFiles::lines(const std::string& path)
{
    std::ifstream file{root() / path, std::ios::binary};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    if (text.find('\0') != std::string::npos)
        return {};
    return split(text, '\n');
}
