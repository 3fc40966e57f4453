#pragma once

#include <cstdint>

/// The allocations by operator new so far, of this program and of all libraries that it is linked with. What Qt's own
/// classes take is not counted.
std::uint64_t allocationCount() noexcept;

/// The bytes of these, whether they were freed since or not.
std::uint64_t allocatedBytes() noexcept;

/// How many allocations `work` makes.
template <class Work>
std::uint64_t allocationsOf(Work work)
{
    const std::uint64_t before = allocationCount();
    work();
    return allocationCount() - before;
}
