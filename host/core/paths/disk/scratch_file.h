#pragma once

#include "host/core/paths/disk/file_handle.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace Kelvaris::System::Disk {

/// A temporary file without a name (in `TMPDIR`, else "/tmp"): it is gone with its last handle, however the process
/// ends. Its last bytes wait in memory until there are enough of them to be written.
class KELVARIS_CORE_API ScratchFile
{
public:
    static Expected<ScratchFile, ErrorCode2> create();

    /// @return  where the bytes stand. After an error, which may be about bytes that have waited, the file holds what
    /// it
    ///          held.
    Expected<std::uint64_t, ErrorCode2> append(std::span<const std::byte> bytes);

    /// Fills all of `target` from `offset` on.
    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const;

    std::uint64_t size() const noexcept { return m_written + m_waiting.size(); }

    /// Forgets what stands from `size` on.
    void truncate(std::uint64_t size) noexcept;

private:
    ScratchFile(FileHandle handle, std::string directory) noexcept;

    Expected<void, ErrorCode2> write(std::span<const std::byte> bytes);
    Expected<void, ErrorCode2> readWritten(std::uint64_t offset, std::span<std::byte> target) const;

    FileHandle m_handle;
    std::uint64_t m_written = 0;
    std::vector<std::byte> m_waiting; ///< behind what is written
    std::string m_directory;          ///< for messages
};

/// `TMPDIR`, else "/tmp".
KELVARIS_CORE_API std::string temporaryDirectory();

} // namespace Kelvaris::System::Disk
