#pragma once

#include "host/core/paths/disk/file_handle.h"
#include "host/core/paths/disk/input_file.h"
#include "host/core/paths/disk/write_behind.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace Kelvaris::System::Disk {

/// A file that takes another's place only when it is whole.
///
/// Bytes go to a temporary file beside the target; `commit` flushes it to the disk and renames it over the target, so
/// that at any moment the old file or the new one stands there, never a piece. The temporary file's name follows from
/// the target's: what a killed process left behind is removed by the next save of the same file.
///
///     auto file = ReplacementFile::create(path);
///     ...
///     return file->write(bytes).andThen([&] { return file->commit(); });
///
/// Every error names the target. What is more than a piece is written by a thread of the file's own, which runs between
/// two calls, and never when `commit` has returned or the file is gone.
class KELVARIS_CORE_API ReplacementFile
{
public:
    /// @param target  a link is followed to the file that it names; what stands there is not touched
    /// @return  core 2 when the path ends without a file name, core 7 when something else than a regular file stands
    /// there, otherwise the system's error: EACCES too
    ///          when the file there is write-protected
    static Expected<ReplacementFile, ErrorCode2> create(const FilePath2& target);

    ReplacementFile(ReplacementFile&&) noexcept;
    ReplacementFile& operator=(ReplacementFile&&) = delete;

    /// Removes the temporary file, unless it was committed.
    ~ReplacementFile();

    /// Appends; buffered, so an error may come with a later call.
    Expected<void, ErrorCode2> write(std::span<const std::byte> bytes);

    /// Appends `length` bytes of `source`, copied by the system where it can.
    /// @return  core 8 when `source` has become shorter, then with its name; otherwise as `write`
    Expected<void, ErrorCode2> append(const InputFile& source, std::uint64_t offset, std::uint64_t length);

    /// Bytes written so far.
    std::uint64_t position() const noexcept { return m_flushed + m_buffer.size(); }

    /// Puts the file in the target's place. Nothing can be written afterwards.
    Expected<void, ErrorCode2> commit();

    /// The target, for messages.
    const std::string& displayName() const noexcept { return m_displayName; }

private:
    ReplacementFile(std::string target, std::string displayName);

    Expected<void, ErrorCode2> open();
    Expected<void, ErrorCode2> flush();
    Expected<void, ErrorCode2> flushBehind();
    Expected<void, ErrorCode2> writeThrough(std::span<const std::byte> bytes);
    Expected<void, ErrorCode2> appendByReading(const InputFile& source, std::uint64_t offset, std::uint64_t length);
    std::uint64_t advance(std::uint64_t written, std::uint64_t enough) noexcept;
    void advanceAndStart(std::uint64_t written) noexcept;
    ErrorCode2 failure(int error) const;

    /// What is known of the file that stood there.
    struct Replaced
    {
        bool exists = false;
        unsigned mode = 0;
        unsigned user = 0;
        unsigned group = 0;
    };

    std::string m_target; ///< behind all links, as the system takes it
    std::string m_displayName;
    std::string m_temporary; ///< empty when there is nothing left to remove
    FileHandle m_handle;
    Replaced m_replaced;
    std::vector<std::byte> m_buffer;
    std::uint64_t m_flushed = 0;
    std::uint64_t m_onItsWay = 0; ///< so much the system is told to write to the disk already
    WriteBehind m_behind;
};

} // namespace Kelvaris::System::Disk
