#pragma once

#include <cstddef>
#include <cstdint>

/// What a package may ask of its reader. What exceeds one is refused with opc 23, which says which; none stands in the
/// way of a barrel of 50,000 examples or a part of 8 GB. docs/limits.md lists them.
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

/// Attributes of one element and namespaces in force at one place: what is compared with each other, so that a hostile
/// document does not take long.
inline constexpr std::uint32_t xmlAttributes = 256;
inline constexpr std::uint32_t xmlNamespaces = 128;

/// Elements, attributes and stretches of text of a document in all, so that a hostile one does not fill the memory. The
/// content types of four million parts have as many.
inline constexpr std::size_t xmlPieces = 16'000'000;

/// Sentences about the relationships of one part: a hostile part would fill the log, and nobody reads more.
inline constexpr std::size_t diagnostics = 100;

/// A name that is made here. A ZIP file holds names of 65,535 bytes; that of a part's relationships is longer than its
/// own, and extra fields stand beside it.
inline constexpr std::size_t partNameBytes = 65'000;

/// Packages in packages: a barrel holds examples, and an example may hold a bundle as one of its files.
inline constexpr int packageDepth = 8;

} // namespace Kelvaris::System::IO::OpcPackaging::Limits
