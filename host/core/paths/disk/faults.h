#pragma once

#include "kelvaris/export.h"

#include <cstdint>
#include <functional>

/// Lets a call to the system fail in a test. Compiled in with HOLLERWICK_FAULTS only, which no build for users has.
namespace Kelvaris::System::Disk::Faults {

#if defined(HOLLERWICK_FAULTS)

/// The calls since the last `fail`, `interfere` or `clear`.
KELVARIS_CORE_API std::uint64_t calls() noexcept;

/// The call number `call`, counted from here and from 0, fails once with `error`, a value of `errno`.
KELVARIS_CORE_API void fail(std::uint64_t call, int error) noexcept;

/// Right ahead of the call number `call`, counted from here and from 0, somebody else does `deed`: takes a directory
/// away, cuts a file short. The call itself is made.
KELVARIS_CORE_API void interfere(std::uint64_t call, std::function<void()> deed);

KELVARIS_CORE_API void clear() noexcept;

/// Counts a call. When it is the one that must fail, sets `errno` and returns true.
bool strike() noexcept;

#else

constexpr bool strike() noexcept
{
    return false;
}

#endif

} // namespace Kelvaris::System::Disk::Faults
