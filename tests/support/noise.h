#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>

/// Bytes that no compression makes fewer; the same in every run.
inline std::string noise(std::size_t size, unsigned seed = 1)
{
    std::mt19937_64 generator{seed};
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(generator() >> 32U); });
    return bytes;
}
