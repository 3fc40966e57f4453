#include "host/core/paths/disk/input_file.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/paths/disk/system_calls.h"

#include <fcntl.h>

#include <cerrno>

namespace Kelvaris::System::Disk {

InputFile::InputFile(FileHandle handle, std::uint64_t size, std::string displayName) noexcept
    : m_handle{std::move(handle)}, m_size{size}, m_displayName{std::move(displayName)}
{
}

Expected<InputFile, ErrorCode2> InputFile::open(const FilePath2& path)
{
    const auto native = nativePath(path);
    if (!native)
        return native.error();
    std::string name = displayedPath(path);
    // Without O_NONBLOCK a pipe that nobody writes to would freeze the caller.
    FileHandle handle{SystemCalls::open(native->c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY)};
    if (!handle && (errno == ENXIO || errno == ENODEV)) // what a socket, or a device without a driver, answers
        return Errors::makeError(CoreError::notARegularFile, name);
    struct stat status
    {
    };
    if (!handle || SystemCalls::status(handle.get(), status) != 0)
        return Errors::systemError(errno, name, "cannot be opened");
    if (!S_ISREG(status.st_mode))
        return Errors::makeError(CoreError::notARegularFile, name);
    return InputFile{std::move(handle), static_cast<std::uint64_t>(status.st_size), std::move(name)};
}

Expected<std::size_t, ErrorCode2> InputFile::readUpTo(std::uint64_t offset, std::span<std::byte> target) const
{
    std::size_t done = 0;
    while (done < target.size()) {
        const ssize_t count = SystemCalls::readAt(m_handle.get(), target.subspan(done), offset + done);
        if (count < 0)
            return Errors::systemError(errno, m_displayName, "cannot be read");
        done += static_cast<std::size_t>(count);
        // behind all that the file had when it was opened, an answer that is short comes from its end
        if (count == 0 || offset + done >= m_size)
            break;
    }
    return done;
}

Expected<void, ErrorCode2> InputFile::readAt(std::uint64_t offset, std::span<std::byte> target) const
{
    const auto count = readUpTo(offset, target);
    if (!count)
        return count.error();
    if (*count < target.size())
        return Errors::makeError(CoreError::fileTruncated, m_displayName);
    return {};
}

} // namespace Kelvaris::System::Disk
