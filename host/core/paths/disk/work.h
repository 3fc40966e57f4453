#pragma once

#include "kelvaris/export.h"

#include <cstdint>
#include <functional>

/// What a program that works for long shows and allows: how far the disk work is, and how to end it in good order.
namespace Kelvaris::System::Disk::Work {

/// Bytes that calls to the system have moved since the process began.
struct Moved
{
    std::uint64_t read = 0;
    std::uint64_t written = 0;
};

KELVARIS_CORE_API const Moved& moved() noexcept;

/// Sees each piece that was moved, on the thread that moved it. It throws nothing.
using Observer = std::function<void(const Moved&)>;

/// Sets the one observer; an empty one ends the observation.
KELVARIS_CORE_API void setObserver(Observer observer);

/// From now on every call to the file system fails with ECANCELED, but for those that clean up: whatever runs ends with
/// that error and leaves nothing half done. A signal handler may call it.
KELVARIS_CORE_API void cancel() noexcept;
KELVARIS_CORE_API bool isCancelled() noexcept;

/// For tests: calls succeed again.
KELVARIS_CORE_API void resume() noexcept;

/// For the calls themselves.
void noteRead(std::int64_t count) noexcept;
void noteWritten(std::int64_t count) noexcept;

} // namespace Kelvaris::System::Disk::Work
