#pragma once

#include "host/core/paths/disk/file_handle.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace Kelvaris::System::Disk {

/// A regular file that is open for reading. All reads are positioned, so that copies of the reader need no state and
/// a file that shrinks gives an error and not a signal.
class KELVARIS_CORE_API InputFile
{
public:
    /// @return  core 7 when a directory, a device, a pipe or a socket stands there (the call never waits for one), core
    ///          5 when the path is no valid text, otherwise the system's error
    static Expected<InputFile, ErrorCode2> open(const FilePath2& path);

    /// Bytes, when the file was opened.
    std::uint64_t size() const noexcept { return m_size; }

    /// The path for messages.
    const std::string& displayName() const noexcept { return m_displayName; }

    /// Fills all of `target` from `offset` on.
    /// @return  core 8 when the file ends before, which it did not when it was opened; otherwise the system's error
    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const;

    /// Reads up to the file's end as it is now, for those who read a file to its end.
    /// @return  bytes; fewer than `target` has room for only at the end
    Expected<std::size_t, ErrorCode2> readUpTo(std::uint64_t offset, std::span<std::byte> target) const;

    const FileHandle& handle() const noexcept { return m_handle; }

private:
    InputFile(FileHandle handle, std::uint64_t size, std::string displayName) noexcept;

    FileHandle m_handle;
    std::uint64_t m_size;
    std::string m_displayName;
};

} // namespace Kelvaris::System::Disk
