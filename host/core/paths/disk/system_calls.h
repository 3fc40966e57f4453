#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// Every call to the file system stands here, so that another platform, or a test that lets one fail, has one place.
/// They return what the system returns, set `errno`, and go on after a signal. What is opened is closed on `exec`.
namespace Kelvaris::System::Disk::SystemCalls {

int open(const char* path, int flags, mode_t mode = 0) noexcept;
int openAt(int directory, const char* name, int flags, mode_t mode = 0) noexcept;

ssize_t readAt(int file, std::span<std::byte> target, std::uint64_t offset) noexcept;
ssize_t writeAt(int file, std::span<const std::byte> bytes, std::uint64_t offset) noexcept;

/// Copies inside the system, without a way through this process.
ssize_t copyRange(int source, std::uint64_t sourceOffset, int target, std::uint64_t targetOffset,
                  std::size_t length) noexcept;

int status(int file, struct stat& result) noexcept;
int statusAt(int directory, const char* name, struct stat& result) noexcept; ///< of a link itself

int makeDirectory(const char* path) noexcept;
int makeDirectoryAt(int directory, const char* name) noexcept;
int makeTemporaryDirectory(char* pattern) noexcept;
int makeTemporaryFile(char* pattern) noexcept;

int flush(int file) noexcept;

/// Has the system begin to write a stretch to the disk, without waiting for it. A hint: a failure changes nothing.
void startWriting(int file, std::uint64_t offset, std::uint64_t length) noexcept;

int rename(const char* from, const char* to) noexcept;
int truncate(int file, std::uint64_t size) noexcept;
int setMode(int file, mode_t mode) noexcept;
int setOwner(int file, uid_t user, gid_t group) noexcept;
int access(const char* path, int mode) noexcept;

/// Takes the exclusive lock of an open file, or fails at once.
int tryLock(int file) noexcept;

/// @return  what a link holds; empty with `errno` when it cannot be read
std::string readLink(const char* path);

// Cleaning up is never made to fail: there would be nobody to tell.
int openForRemoval(int directory, const char* name, int flags) noexcept;
int remove(const char* path) noexcept;
int removeAt(int directory, const char* name, int flags) noexcept;

} // namespace Kelvaris::System::Disk::SystemCalls
