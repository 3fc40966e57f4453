#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// A directory of a test's own, removed with it. Its name holds a blank and letters beyond ASCII, so that no test
/// passes only because paths are simple.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const noexcept { return m_path; }

    /// A path below the folder; nothing is made.
    std::filesystem::path operator/(std::string_view relative) const { return m_path / relative; }

    /// Writes a file below the folder, with the directories that it needs, and gives its path.
    std::filesystem::path write(std::string_view relative, std::string_view bytes) const;

private:
    std::filesystem::path m_path;
};

/// All bytes of a file; fails the test when it cannot be read.
std::string readFile(const std::filesystem::path& path);
