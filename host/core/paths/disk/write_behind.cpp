#include "host/core/paths/disk/write_behind.h"

#include "host/core/paths/disk/system_calls.h"

#include <cerrno>
#include <system_error>
#include <thread>

namespace Kelvaris::System::Disk {

namespace {

bool hasOtherProcessors()
{
    static const bool answer = std::thread::hardware_concurrency() > 1;
    return answer;
}

} // namespace

int writeAll(int file, std::span<const std::byte> bytes, std::uint64_t offset) noexcept
{
    while (!bytes.empty()) {
        const ssize_t count = SystemCalls::writeAt(file, bytes, offset);
        if (count < 0)
            return errno;
        offset += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return 0;
}

int WriteBehind::begin(int file, std::vector<std::byte>& piece, std::uint64_t offset, std::uint64_t startFrom)
{
    if (const int error = finish(); error != 0)
        return error;
    m_piece.swap(piece);
    piece.clear();
    piece.reserve(m_piece.size());
    const auto work = [=, bytes = std::span<const std::byte>{m_piece}] {
        const int error = writeAll(file, bytes, offset);
        const std::uint64_t end = offset + bytes.size();
        if (error == 0 && startFrom < end)
            SystemCalls::startWriting(file, startFrom, end - startFrom);
        return error;
    };
    try {
        if (hasOtherProcessors()) {
            m_written = std::async(std::launch::async, work);
            return 0;
        }
    } catch (const std::system_error&) {
        // no thread to be had
    }
    return work();
}

int WriteBehind::finish() noexcept
{
    return m_written.valid() ? m_written.get() : 0;
}

} // namespace Kelvaris::System::Disk
