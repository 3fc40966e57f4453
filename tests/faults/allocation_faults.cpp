#include "tests/faults/allocation_faults.h"

#include <libdeflate.h>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace AllocationFaults {

namespace {

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();

std::atomic<std::uint64_t> s_calls{0};
std::atomic<std::uint64_t> s_failing{never};
std::atomic<std::size_t> s_threshold{std::numeric_limits<std::size_t>::max()};

/// @return  null for the one that must fail
void* allocate(std::size_t size) noexcept
{
    if (size > s_threshold && s_calls++ == s_failing)
        return nullptr;
    return std::malloc(size == 0 ? 1 : size);
}

[[maybe_unused]] const bool isInstalled = (libdeflate_set_memory_allocator(&allocate, &std::free), true);

} // namespace

std::uint64_t calls() noexcept
{
    return s_calls;
}

void fail(std::uint64_t call, std::size_t threshold) noexcept
{
    s_calls = 0;
    s_threshold = threshold;
    s_failing = call;
}

void count(std::size_t threshold) noexcept
{
    fail(never, threshold);
}

void clear() noexcept
{
    fail(never, std::numeric_limits<std::size_t>::max());
}

void* allocated(std::size_t size)
{
    if (void* const bytes = allocate(size))
        return bytes;
    throw std::bad_alloc{};
}

} // namespace AllocationFaults

void* operator new(std::size_t size)
{
    return AllocationFaults::allocated(size);
}

void* operator new[](std::size_t size)
{
    return AllocationFaults::allocated(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return AllocationFaults::allocate(size);
}

void operator delete(void* bytes) noexcept
{
    std::free(bytes);
}

void operator delete[](void* bytes) noexcept
{
    std::free(bytes);
}

void operator delete(void* bytes, std::size_t) noexcept
{
    std::free(bytes);
}

void operator delete[](void* bytes, std::size_t) noexcept
{
    std::free(bytes);
}

void operator delete(void* bytes, const std::nothrow_t&) noexcept
{
    std::free(bytes);
}
