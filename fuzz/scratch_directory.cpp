#include "fuzz/scratch_directory.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

ScratchDirectory::ScratchDirectory()
{
    std::string path = (fs::temp_directory_path() / "hollerwick-fuzz-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr)
        throw std::runtime_error{"cannot make " + path};
    m_path = path;
}

ScratchDirectory::~ScratchDirectory()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

void ScratchDirectory::clear() const
{
    for (const auto& entry : fs::directory_iterator{m_path})
        fs::remove_all(entry.path());
}

fs::path ScratchDirectory::write(std::string_view relative, std::string_view bytes) const
{
    const fs::path path = m_path / relative;
    fs::create_directories(path.parent_path());
    std::ofstream{path, std::ios::binary} << bytes;
    return path;
}

Kelvaris::System::FilePath2 toFilePath2(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {text.data(), text.size()};
}

std::map<std::string, std::string> contentsOf(const fs::path& directory, const fs::path& left)
{
    std::map<std::string, std::string> contents;
    for (auto entry = fs::recursive_directory_iterator{directory}; entry != fs::recursive_directory_iterator{};
         ++entry) {
        if (entry->path() == left) {
            entry.disable_recursion_pending();
            continue;
        }
        std::string& found = contents[entry->path().string()];
        if (entry->is_symlink() || !entry->is_regular_file()) {
            found = entry->is_directory() && !entry->is_symlink() ? "directory" : "neither file nor directory";
            continue;
        }
        std::ifstream file{entry->path(), std::ios::binary};
        found = "file " + std::string{std::istreambuf_iterator<char>{file}, {}};
    }
    return contents;
}
