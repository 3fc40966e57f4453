#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

/// What the fuzz targets share. Each one is `LLVMFuzzerTestOneInput`; without libFuzzer, run_seeds.cpp is its main
/// function.
namespace Fuzzing {

/// A promise that must hold for every input; ends the program when it does not, so that the fuzzer keeps the input.
inline void require(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

inline std::span<const std::byte> bytesOf(const std::uint8_t* data, std::size_t size)
{
    return std::as_bytes(std::span{data, size});
}

inline std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span{text});
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace Fuzzing
