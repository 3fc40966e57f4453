#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string name = (fs::temp_directory_path() / "höller wick XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw std::runtime_error{"cannot make " + name};
    m_path = name;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    for (auto it = fs::recursive_directory_iterator{m_path, ignored}; it != fs::recursive_directory_iterator{};
         it.increment(ignored)) {
        // a test may have taken the permission to write away
        if (it->is_directory(ignored) && !it->is_symlink(ignored))
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(m_path, ignored);
}

fs::path TemporaryFolder::write(std::string_view relative, std::string_view bytes) const
{
    const fs::path path = m_path / relative;
    fs::create_directories(path.parent_path());
    std::ofstream file{path, std::ios::binary};
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error{"cannot write " + path.string()};
    return path;
}

std::string readFile(const fs::path& path)
{
    std::ifstream file{path, std::ios::binary};
    EXPECT_TRUE(file) << path;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return std::move(bytes).str();
}
