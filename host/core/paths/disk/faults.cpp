#include "host/core/paths/disk/faults.h"

#if defined(HOLLERWICK_FAULTS)

#include <atomic>
#include <cerrno>
#include <limits>
#include <utility>

namespace Kelvaris::System::Disk::Faults {

namespace {

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();

std::atomic<std::uint64_t> s_calls{0};
std::atomic<std::uint64_t> s_failing{never};
std::atomic<int> s_error{0};
std::atomic<std::uint64_t> s_interfering{never};
std::function<void()> s_deed;

} // namespace

std::uint64_t calls() noexcept
{
    return s_calls;
}

void fail(std::uint64_t call, int error) noexcept
{
    s_calls = 0;
    s_error = error;
    s_failing = call;
    s_interfering = never;
}

void interfere(std::uint64_t call, std::function<void()> deed)
{
    clear();
    s_deed = std::move(deed);
    s_interfering = call;
}

void clear() noexcept
{
    fail(never, 0);
}

bool strike() noexcept
{
    const std::uint64_t call = s_calls++;
    if (call == s_interfering)
        s_deed();
    if (call != s_failing)
        return false;
    errno = s_error;
    return true;
}

} // namespace Kelvaris::System::Disk::Faults

#endif
