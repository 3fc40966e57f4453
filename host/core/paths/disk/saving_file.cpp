#include "host/core/paths/disk/saving_file.h"

#include "host/core/paths/disk/system_calls.h"

#include <fcntl.h>

#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <string_view>

namespace Kelvaris::System::Disk {

namespace {

/// Saves of one file at the same time, and names in the way that are not ours.
constexpr int maximumNames = 100;

/// FNV-1a; the name must be the same in every process, which `std::hash` does not promise.
std::uint64_t hashOf(std::string_view text)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
    return hash;
}

/// Of a fixed length, since the target's name may be as long as the file system allows already.
std::string savingName(const std::string& target, int number)
{
    const std::size_t begin = target.rfind('/') + 1;
    char name[64];
    std::snprintf(name, sizeof name, ".hollerwick-%016" PRIx64 "-%02d.saving",
                  hashOf(std::string_view{target}.substr(begin)), number);
    return target.substr(0, begin) + name;
}

bool standsAt(const std::string& path, const FileHandle& file)
{
    struct stat opened
    {
    };
    struct stat standing
    {
    };
    return SystemCalls::status(file.get(), opened) == 0 &&
           SystemCalls::statusAt(AT_FDCWD, path.c_str(), standing) == 0 && S_ISREG(opened.st_mode) &&
           opened.st_dev == standing.st_dev && opened.st_ino == standing.st_ino;
}

/// @return  a value of `errno`; EEXIST when the name is taken
Expected<FileHandle, int> claim(const std::string& path, unsigned mode)
{
    FileHandle file{SystemCalls::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode)};
    if (!file)
        return errno;
    // Between the two calls another save may have taken the file for a leftover. On a file system without locks
    // there are no leftovers to take.
    const bool locked = SystemCalls::tryLock(file.get()) == 0 || errno != EWOULDBLOCK;
    if (locked && standsAt(path, file))
        return file;
    return EEXIST;
}

/// Removes the file of a save that was killed.
/// @return  whether there was one
bool removeLeftover(const std::string& path)
{
    const FileHandle file{SystemCalls::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK)};
    return file && SystemCalls::tryLock(file.get()) == 0 && standsAt(path, file) &&
           SystemCalls::remove(path.c_str()) == 0;
}

} // namespace

Expected<SavingFile, int> openSavingFile(const std::string& target, unsigned mode)
{
    for (int number = 0; number < maximumNames; ++number) {
        std::string path = savingName(target, number);
        auto file = claim(path, mode);
        if (!file && file.error() == EEXIST && removeLeftover(path))
            file = claim(path, mode);
        if (!file && file.error() == EEXIST)
            continue;
        if (!file)
            return file.error();
        for (int next = number + 1; next < maximumNames && removeLeftover(savingName(target, next));)
            ++next;
        return SavingFile{*std::move(file), std::move(path)};
    }
    return EEXIST;
}

} // namespace Kelvaris::System::Disk
