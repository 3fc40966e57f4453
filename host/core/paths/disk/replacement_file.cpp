#include "host/core/paths/disk/replacement_file.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/native_path.h"
#include "host/core/paths/disk/saving_file.h"
#include "host/core/paths/disk/system_calls.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Kelvaris::System::Disk {

namespace {

constexpr std::string_view notWritten = "cannot be written";
constexpr std::size_t bufferSize = 512 * 1024;
constexpr std::size_t copyChunk = 1024 * 1024;

/// The disk begins with a file of which so much is written, rather than with all of it at the end. More when the
/// caller's thread writes: it waits where the disk has more to do than it can take.
constexpr std::uint64_t startBehind = std::uint64_t{4} << 20;
constexpr std::uint64_t startHere = std::uint64_t{32} << 20;

/// What the kernel allows too (MAXSYMLINKS).
constexpr int maximumLinks = 40;

/// "a/b" -> "a/"; "b" -> "".
std::string directoryOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

/// The new file stands. Should this fail, a power cut may bring the old one back, which is whole too.
void flushDirectory(const char* directory) noexcept
{
    if (const FileHandle handle{SystemCalls::open(directory, O_RDONLY | O_DIRECTORY)})
        (void)SystemCalls::flush(handle.get());
}

/// The path behind all links, whether something stands there or not.
Expected<std::string, int> behindLinks(std::string path)
{
    for (int links = 0; links < maximumLinks; ++links) {
        struct stat status
        {
        };
        if (SystemCalls::statusAt(AT_FDCWD, path.c_str(), status) != 0 || !S_ISLNK(status.st_mode))
            return path;
        const std::string link = SystemCalls::readLink(path.c_str());
        if (link.empty())
            return errno;
        path = link.starts_with('/') ? link : directoryOf(path).append(link);
    }
    return ELOOP;
}

} // namespace

ReplacementFile::ReplacementFile(std::string target, std::string displayName)
    : m_target{std::move(target)}, m_displayName{std::move(displayName)}
{
}

ReplacementFile::ReplacementFile(ReplacementFile&& other) noexcept
    : m_target{std::move(other.m_target)}, m_displayName{std::move(other.m_displayName)},
      m_temporary{std::exchange(other.m_temporary, {})}, m_handle{std::move(other.m_handle)},
      m_replaced{other.m_replaced}, m_buffer{std::exchange(other.m_buffer, {})}, m_flushed{other.m_flushed},
      m_onItsWay{other.m_onItsWay}, m_behind{std::move(other.m_behind)}
{
}

ReplacementFile::~ReplacementFile()
{
    if (!m_temporary.empty())
        SystemCalls::remove(m_temporary.c_str());
}

ErrorCode2 ReplacementFile::failure(int error) const
{
    return Errors::systemError(error, m_displayName, notWritten);
}

Expected<ReplacementFile, ErrorCode2> ReplacementFile::create(const FilePath2& target)
{
    auto native = nativePath(target);
    if (!native)
        return native.error();
    std::string name = displayedPath(target);
    auto resolved = behindLinks(*std::move(native));
    if (!resolved)
        return Errors::systemError(resolved.error(), name, notWritten);
    if (resolved->empty() || resolved->ends_with('/'))
        return Errors::makeError(CoreError::noFileName, name);
    ReplacementFile file{*std::move(resolved), std::move(name)};
    if (auto opened = file.open(); !opened)
        return opened.error();
    return file;
}

Expected<void, ErrorCode2> ReplacementFile::open()
{
    struct stat status
    {
    };
    if (SystemCalls::statusAt(AT_FDCWD, m_target.c_str(), status) == 0) {
        if (!S_ISREG(status.st_mode))
            return Errors::makeError(CoreError::notARegularFile, m_displayName);
        // a rename would go through, but write protection is meant for the file, not for its directory's entry
        if (SystemCalls::access(m_target.c_str(), W_OK) != 0)
            return failure(errno);
        m_replaced = {.exists = true, .mode = status.st_mode & 0777U, .user = status.st_uid, .group = status.st_gid};
    } else if (errno != ENOENT) {
        return failure(errno);
    }
    // until it is whole, nobody else reads what may replace a private file
    auto saving = openSavingFile(m_target, m_replaced.exists ? 0600 : 0666);
    if (!saving)
        return Errors::systemError(saving.error(), m_displayName, notWritten);
    m_handle = std::move(saving->handle);
    m_temporary = std::move(saving->path);
    m_buffer.reserve(bufferSize);
    return {};
}

Expected<void, ErrorCode2> ReplacementFile::writeThrough(std::span<const std::byte> bytes)
{
    if (const int error = writeAll(m_handle.get(), bytes, m_flushed); error != 0)
        return failure(error);
    advanceAndStart(bytes.size());
    return {};
}

/// @param enough  of what is not on its way
/// @return  from where on the disk shall begin with what is written; the end when there is less of it
std::uint64_t ReplacementFile::advance(std::uint64_t written, std::uint64_t enough) noexcept
{
    m_flushed += written;
    return m_flushed - m_onItsWay < enough ? m_flushed : std::exchange(m_onItsWay, m_flushed);
}

void ReplacementFile::advanceAndStart(std::uint64_t written) noexcept
{
    if (const std::uint64_t begin = advance(written, startHere); begin < m_flushed)
        SystemCalls::startWriting(m_handle.get(), begin, m_flushed - begin);
}

Expected<void, ErrorCode2> ReplacementFile::flush()
{
    if (const int error = m_behind.finish(); error != 0)
        return failure(error);
    auto written = writeThrough(m_buffer);
    m_buffer.clear();
    return written;
}

Expected<void, ErrorCode2> ReplacementFile::flushBehind()
{
    if (m_buffer.empty())
        return {};
    const std::uint64_t begin = m_flushed;
    const std::uint64_t startFrom = advance(m_buffer.size(), startBehind);
    if (const int error = m_behind.begin(m_handle.get(), m_buffer, begin, startFrom); error != 0)
        return failure(error);
    return {};
}

Expected<void, ErrorCode2> ReplacementFile::write(std::span<const std::byte> bytes)
{
    if (m_buffer.size() + bytes.size() > bufferSize) {
        if (auto flushed = flushBehind(); !flushed)
            return flushed;
    }
    if (bytes.size() >= bufferSize)
        return writeThrough(bytes);
    m_buffer.insert(m_buffer.end(), bytes.begin(), bytes.end());
    return {};
}

Expected<void, ErrorCode2> ReplacementFile::append(const InputFile& source, std::uint64_t offset, std::uint64_t length)
{
    if (auto flushed = flush(); !flushed)
        return flushed;
    while (length > 0) {
        const auto chunk = static_cast<std::size_t>(std::min(length, startHere));
        const ssize_t count = SystemCalls::copyRange(source.handle().get(), offset, m_handle.get(), m_flushed, chunk);
        if (count <= 0) // not between these two files, or a failure: reading and writing tells which one's
            return appendByReading(source, offset, length);
        advanceAndStart(static_cast<std::uint64_t>(count));
        offset += static_cast<std::uint64_t>(count);
        length -= static_cast<std::uint64_t>(count);
    }
    return {};
}

Expected<void, ErrorCode2> ReplacementFile::appendByReading(const InputFile& source, std::uint64_t offset,
                                                            std::uint64_t length)
{
    std::vector<std::byte> buffer(static_cast<std::size_t>(std::min<std::uint64_t>(length, copyChunk)));
    while (length > 0) {
        const auto piece =
            std::span{buffer}.first(static_cast<std::size_t>(std::min<std::uint64_t>(length, copyChunk)));
        auto copied = source.readAt(offset, piece).andThen([&] { return write(piece); });
        if (!copied)
            return copied;
        offset += piece.size();
        length -= piece.size();
    }
    return {};
}

Expected<void, ErrorCode2> ReplacementFile::commit()
{
    if (auto flushed = flush(); !flushed)
        return flushed;
    if (m_replaced.exists) {
        // Only the administrator can give a file away; others keep what they may, as every editor does.
        (void)SystemCalls::setOwner(m_handle.get(), m_replaced.user, m_replaced.group);
        if (SystemCalls::setMode(m_handle.get(), m_replaced.mode) != 0)
            return failure(errno);
    }
    // ahead of the rename, behind which nothing may fail
    const std::string directory = directoryOf(m_target);
    if (SystemCalls::flush(m_handle.get()) != 0 || SystemCalls::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        return failure(errno);
    m_temporary.clear();
    m_handle.reset();
    flushDirectory(directory.empty() ? "." : directory.c_str());
    return {};
}

} // namespace Kelvaris::System::Disk
