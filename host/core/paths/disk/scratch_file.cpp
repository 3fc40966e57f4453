#include "host/core/paths/disk/scratch_file.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/system_calls.h"
#include "host/core/text/text_view.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace Kelvaris::System::Disk {

namespace {

/// Small files are written and read back one by one; together they take a tenth of the calls.
constexpr std::size_t mostWaiting = std::size_t{256} << 10;

constexpr std::string_view notWritten = "no temporary file can be written there";

FileHandle openUnnamed(const std::string& directory)
{
    FileHandle handle{SystemCalls::open(directory.c_str(), O_TMPFILE | O_RDWR | O_EXCL, 0600)};
    if (handle || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL))
        return handle;
    // some file systems cannot make a file without a name
    std::string pattern = directory + "/hollerwick-XXXXXX";
    FileHandle named{SystemCalls::makeTemporaryFile(pattern.data())};
    if (named)
        SystemCalls::remove(pattern.c_str());
    return named;
}

} // namespace

std::string temporaryDirectory()
{
    const char* directory = std::getenv("TMPDIR");
    return directory == nullptr || *directory == '\0' ? "/tmp" : directory;
}

ScratchFile::ScratchFile(FileHandle handle, std::string directory) noexcept
    : m_handle{std::move(handle)}, m_directory{std::move(directory)}
{
}

Expected<ScratchFile, ErrorCode2> ScratchFile::create()
{
    const std::string directory = temporaryDirectory();
    FileHandle handle = openUnnamed(directory);
    if (!handle)
        return Errors::systemError(errno, Text::displayed(directory), notWritten);
    return ScratchFile{std::move(handle), Text::displayed(directory)};
}

Expected<std::uint64_t, ErrorCode2> ScratchFile::append(std::span<const std::byte> bytes)
{
    if (m_waiting.size() + bytes.size() > mostWaiting) {
        if (auto written = write(m_waiting); !written)
            return written.error();
        m_waiting.clear();
    }
    const std::uint64_t begin = size();
    if (bytes.size() <= mostWaiting) {
        m_waiting.insert(m_waiting.end(), bytes.begin(), bytes.end());
        return begin;
    }
    if (auto written = write(bytes); !written)
        return written.error();
    return begin;
}

/// Behind what is written; after an error that is as it was.
Expected<void, ErrorCode2> ScratchFile::write(std::span<const std::byte> bytes)
{
    std::uint64_t end = m_written;
    while (!bytes.empty()) {
        const ssize_t count = SystemCalls::writeAt(m_handle.get(), bytes, end);
        if (count < 0)
            return Errors::systemError(errno, m_directory, notWritten);
        end += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    m_written = end;
    return {};
}

Expected<void, ErrorCode2> ScratchFile::readAt(std::uint64_t offset, std::span<std::byte> target) const
{
    if (offset + target.size() > size())
        return Errors::makeError(CoreError::fileTruncated, m_directory);
    const std::size_t written = offset < m_written ? std::min<std::uint64_t>(target.size(), m_written - offset) : 0;
    if (auto read = readWritten(offset, target.first(written)); !read)
        return read;
    const std::span<std::byte> rest = target.subspan(written);
    const auto waiting = std::span{m_waiting}.subspan(offset + written - std::min(offset + written, m_written));
    std::copy_n(waiting.begin(), rest.size(), rest.begin());
    return {};
}

Expected<void, ErrorCode2> ScratchFile::readWritten(std::uint64_t offset, std::span<std::byte> target) const
{
    while (!target.empty()) {
        const ssize_t count = SystemCalls::readAt(m_handle.get(), target, offset);
        if (count < 0)
            return Errors::systemError(errno, m_directory, "a temporary file there cannot be read");
        if (count == 0)
            return Errors::makeError(CoreError::fileTruncated, m_directory);
        offset += static_cast<std::uint64_t>(count);
        target = target.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

void ScratchFile::truncate(std::uint64_t size) noexcept
{
    if (size >= m_written) {
        m_waiting.erase(m_waiting.begin() + static_cast<std::ptrdiff_t>(size - m_written), m_waiting.end());
        return;
    }
    m_waiting.clear();
    m_written = size;
    // A failure costs room on the disk and nothing else: the next bytes overwrite what stays.
    (void)SystemCalls::truncate(m_handle.get(), size);
}

} // namespace Kelvaris::System::Disk
