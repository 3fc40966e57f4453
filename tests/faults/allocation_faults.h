#pragma once

#include <cstddef>
#include <cstdint>

/// Lets one allocation of the program fail. A program that links this has operator new and the allocator of libdeflate
/// replaced.
namespace AllocationFaults {

/// The allocations above `threshold` bytes since the last `fail` or `clear`.
std::uint64_t calls() noexcept;

/// The allocation number `call`, counted from here and from 0 among those above `threshold` bytes, fails once.
void fail(std::uint64_t call, std::size_t threshold) noexcept;

/// Only counts.
void count(std::size_t threshold) noexcept;

void clear() noexcept;

} // namespace AllocationFaults
