#pragma once

#include "host/core/paths/disk/file_handle.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace Kelvaris::System::Disk {

/// Goes from directory to directory below a root without ever following a link, makes those that are missing, and can
/// take them away again.
///
/// It holds the root and the directory where it is, and nothing else, so that depth and number cost no open files. The
/// names that it is given must live as long as the walker: it remembers where they are.
class DirectoryWalker
{
public:
    using Names = std::span<const std::string>;

    /// @param root  may be missing; links on the way to it are followed, since the user named it
    static Expected<DirectoryWalker, ErrorCode2> open(std::string root, std::string displayName);

    /// Goes to a directory below the root; staying where it is costs nothing.
    /// @return  whether it is there; opc 24 when a link stands in the way, opc 25 when a file does
    Expected<bool, ErrorCode2> enter(Names names);

    /// The same, and makes what is missing.
    Expected<void, ErrorCode2> make(Names names);

    /// Where the last `enter` or `make` led to.
    int directory() const noexcept { return m_here ? m_here.get() : m_root.get(); }

    /// For messages.
    std::string describe(Names names) const;

    /// Bytes of a path below the root, as others must name it.
    std::size_t pathLength(Names names) const;

    /// Removes one file below the root if it is there.
    void removeFile(Names names) noexcept;

    /// Removes the directories that `make` has made, as far as they are empty.
    void removeMadeDirectories() noexcept;

    void keepMadeDirectories() noexcept;

private:
    DirectoryWalker(std::string root, std::string displayName);

    Expected<bool, ErrorCode2> step(FileHandle& here, Names names, bool makeMissing);
    Expected<bool, ErrorCode2> walk(Names names, bool makeMissing);
    Expected<void, ErrorCode2> makeRoot();
    FileHandle openForRemoval(Names names) const noexcept;
    ErrorCode2 blocked(int error, int directory, Names names) const;

    std::string m_rootPath;
    std::string m_displayName;
    FileHandle m_root; ///< none while it is missing
    FileHandle m_here; ///< none at the root
    Names m_place;
    bool m_isThere = false;               ///< whether `m_place` exists
    std::vector<std::string> m_madeAbove; ///< the root and directories above it, outermost first
    std::vector<Names> m_madeBelow;
};

} // namespace Kelvaris::System::Disk
