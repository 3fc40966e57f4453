#pragma once

#include <cstddef>
#include <cstdint>

/// What a package may ask of its reader. Every limit answers opc 23 with its name, and none stands in the way of a
/// barrel of 50,000 examples or a part of 8 GB.
namespace Kelvaris::System::IO::OpcPackaging::Limits {

/// Deflate cannot do better than 1:1032, and text that does that is no design: beyond the grace, an entry may inflate
/// to at most this many times its compressed size.
inline constexpr std::uint64_t inflateRatio = 1000;
inline constexpr std::uint64_t inflateGrace = std::uint64_t{8} << 20;

/// What is inflated or read into memory as a whole: a page, a nested package that is compressed. Larger parts are
/// streamed.
inline constexpr std::uint64_t partInMemory = std::uint64_t{1} << 30;

/// Entries of one archive; the directory of so many takes about 300 MB to read.
inline constexpr std::uint64_t entries = 4'000'000;

/// Bytes and depth of an XML part of the package layer. The content types of a million parts fit.
inline constexpr std::uint64_t xmlBytes = std::uint64_t{256} << 20;
inline constexpr std::size_t xmlDepth = 64;

/// Packages in packages: a barrel holds examples, and an example may hold a bundle as one of its files.
inline constexpr int packageDepth = 8;

} // namespace Kelvaris::System::IO::OpcPackaging::Limits
