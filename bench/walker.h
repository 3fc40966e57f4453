#pragma once

#include <cstddef>
#include <string>

namespace Bench {

/// The texts of one example, as they stand in its XML.
struct WalkedExample
{
    std::string title;
    std::string description;
    std::string keywords;
    std::string manufacturer;
};

/// Reads the texts of all examples of a barrel in the plainest way that reads the same bytes: the directories, the core
/// properties and the bundle's properties of each example, with no check of anything. What a strict reader is measured
/// against.
/// @return  how many there are; 0 when the file cannot be read
std::size_t walkBarrel(const std::string& path);

} // namespace Bench
