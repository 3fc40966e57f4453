#include "host/core/paths/disk/work.h"

#include <atomic>
#include <utility>

namespace Kelvaris::System::Disk::Work {

namespace {

std::atomic<bool> s_isCancelled{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

Moved s_moved;

Observer& observer()
{
    static Observer theObserver;
    return theObserver;
}

void tell() noexcept
{
    if (observer())
        observer()(s_moved);
}

} // namespace

const Moved& moved() noexcept
{
    return s_moved;
}

void setObserver(Observer theObserver)
{
    observer() = std::move(theObserver);
}

void cancel() noexcept
{
    s_isCancelled = true;
}

bool isCancelled() noexcept
{
    return s_isCancelled;
}

void resume() noexcept
{
    s_isCancelled = false;
}

void noteRead(std::int64_t count) noexcept
{
    if (count <= 0)
        return;
    s_moved.read += static_cast<std::uint64_t>(count);
    tell();
}

void noteWritten(std::int64_t count) noexcept
{
    if (count <= 0)
        return;
    s_moved.written += static_cast<std::uint64_t>(count);
    tell();
}

} // namespace Kelvaris::System::Disk::Work
