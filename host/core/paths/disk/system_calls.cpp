#include "host/core/paths/disk/system_calls.h"

#include "host/core/paths/disk/faults.h"
#include "host/core/paths/disk/work.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace Kelvaris::System::Disk::SystemCalls {

namespace {

template <class Call>
auto calling(Call call) noexcept -> decltype(call())
{
    if (Faults::strike())
        return -1;
    // looked at again after a signal: it may have come while the call waited, for the other end of a pipe
    while (!Work::isCancelled()) {
        const auto result = call();
        if (result != -1 || errno != EINTR)
            return result;
    }
    errno = ECANCELED;
    return -1;
}

/// A file that grows beyond the user's limit must be an error and not the end of the host.
void ignoreFileSizeSignal() noexcept
{
    struct sigaction action
    {
    };
    if (::sigaction(SIGXFSZ, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
        return;
    action.sa_handler = SIG_IGN;
    (void)::sigaction(SIGXFSZ, &action, nullptr); // fails for a signal that does not exist only
}

/// Ahead of each call that lets a file grow.
void ignoreFileSizeSignalOnce() noexcept
{
    [[maybe_unused]] static const bool once = (ignoreFileSizeSignal(), true);
}

} // namespace

int open(const char* path, int flags, mode_t mode) noexcept
{
    return openAt(AT_FDCWD, path, flags, mode);
}

int openAt(int directory, const char* name, int flags, mode_t mode) noexcept
{
    return calling([&] { return ::openat(directory, name, flags | O_CLOEXEC, mode); });
}

ssize_t readAt(int file, std::span<std::byte> target, std::uint64_t offset) noexcept
{
    const ssize_t count =
        calling([&] { return ::pread(file, target.data(), target.size(), static_cast<off_t>(offset)); });
    Work::noteRead(count);
    return count;
}

ssize_t writeAt(int file, std::span<const std::byte> bytes, std::uint64_t offset) noexcept
{
    ignoreFileSizeSignalOnce();
    const ssize_t count =
        calling([&] { return ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
    Work::noteWritten(count);
    return count;
}

ssize_t copyRange(int source, std::uint64_t sourceOffset, int target, std::uint64_t targetOffset,
                  std::size_t length) noexcept
{
    ignoreFileSizeSignalOnce();
    auto from = static_cast<off_t>(sourceOffset);
    auto to = static_cast<off_t>(targetOffset);
    const ssize_t count = calling([&] { return ::copy_file_range(source, &from, target, &to, length, 0); });
    Work::noteRead(count);
    Work::noteWritten(count);
    return count;
}

int status(int file, struct stat& result) noexcept
{
    return calling([&] { return ::fstat(file, &result); });
}

int statusAt(int directory, const char* name, struct stat& result) noexcept
{
    return calling([&] { return ::fstatat(directory, name, &result, AT_SYMLINK_NOFOLLOW); });
}

int makeDirectory(const char* path) noexcept
{
    return makeDirectoryAt(AT_FDCWD, path);
}

int makeDirectoryAt(int directory, const char* name) noexcept
{
    return calling([&] { return ::mkdirat(directory, name, 0777); });
}

int makeTemporaryDirectory(char* pattern) noexcept
{
    return calling([&] { return ::mkdtemp(pattern) == nullptr ? -1 : 0; });
}

int makeTemporaryFile(char* pattern) noexcept
{
    return calling([&] { return ::mkostemp(pattern, O_CLOEXEC); });
}

int flush(int file) noexcept
{
    return calling([&] { return ::fsync(file); });
}

void startWriting(int file, std::uint64_t offset, std::uint64_t length) noexcept
{
    (void)::sync_file_range(file, static_cast<off_t>(offset), static_cast<off_t>(length), SYNC_FILE_RANGE_WRITE);
}

int rename(const char* from, const char* to) noexcept
{
    return calling([&] { return ::rename(from, to); });
}

int truncate(int file, std::uint64_t size) noexcept
{
    return calling([&] { return ::ftruncate(file, static_cast<off_t>(size)); });
}

int setMode(int file, mode_t mode) noexcept
{
    return calling([&] { return ::fchmod(file, mode); });
}

int setOwner(int file, uid_t user, gid_t group) noexcept
{
    return calling([&] { return ::fchown(file, user, group); });
}

int access(const char* path, int mode) noexcept
{
    return calling([&] { return ::faccessat(AT_FDCWD, path, mode, AT_EACCESS); });
}

int tryLock(int file) noexcept
{
    return calling([&] { return ::flock(file, LOCK_EX | LOCK_NB); });
}

std::string readLink(const char* path)
{
    std::string text(PATH_MAX, '\0');
    const ssize_t length = calling([&] { return ::readlink(path, text.data(), text.size()); });
    text.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return text;
}

int openForRemoval(int directory, const char* name, int flags) noexcept
{
    return ::openat(directory, name, flags | O_CLOEXEC);
}

int remove(const char* path) noexcept
{
    return ::unlink(path);
}

int removeAt(int directory, const char* name, int flags) noexcept
{
    return ::unlinkat(directory, name, flags);
}

} // namespace Kelvaris::System::Disk::SystemCalls
