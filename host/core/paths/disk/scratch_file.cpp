#include "host/core/paths/disk/scratch_file.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/system_calls.h"
#include "host/core/text/text_view.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdlib>

namespace Kelvaris::System::Disk {

namespace {

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
    const std::uint64_t begin = m_size;
    std::uint64_t end = m_size;
    while (!bytes.empty()) {
        const ssize_t count = SystemCalls::writeAt(m_handle.get(), bytes, end);
        if (count < 0)
            return Errors::systemError(errno, m_directory, notWritten);
        end += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    m_size = end;
    return begin;
}

Expected<void, ErrorCode2> ScratchFile::readAt(std::uint64_t offset, std::span<std::byte> target) const
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
    m_size = size;
    // A failure costs room on the disk and nothing else: the next bytes overwrite what stays.
    (void)SystemCalls::truncate(m_handle.get(), size);
}

} // namespace Kelvaris::System::Disk
