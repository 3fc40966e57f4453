#pragma once

#include "kelvaris/system/file_path2.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

/// A directory of a fuzz target's own below the one for temporary files, emptied for each input and removed with the
/// program.
class ScratchDirectory
{
public:
    ScratchDirectory();
    ~ScratchDirectory();

    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    std::filesystem::path operator/(std::string_view relative) const { return m_path / relative; }
    const std::filesystem::path& path() const noexcept { return m_path; }

    /// Removes all that is in it.
    void clear() const;

    std::filesystem::path write(std::string_view relative, std::string_view bytes) const;

private:
    std::filesystem::path m_path;
};

Kelvaris::System::FilePath2 toFilePath2(const std::filesystem::path& path);

/// What stands below a directory, by path: the bytes of each file, a word for each directory and for anything else.
/// @param left  a path that is not looked into
std::map<std::string, std::string> contentsOf(const std::filesystem::path& directory,
                                              const std::filesystem::path& left = {});
