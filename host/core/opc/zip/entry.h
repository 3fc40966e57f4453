#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// The two methods that ISO/IEC 29500-2 Annex C allows.
enum class Method : std::uint16_t { stored = 0, deflated = 8 };

/// One record of an archive's directory; views into its bytes.
struct Entry
{
    std::string_view name;             ///< as it stands: UTF-8 when `hasUtf8Name`, else of unknown encoding
    std::span<const std::byte> record; ///< all of it, name, extra field and comment included

    std::uint64_t size = 0;
    std::uint64_t compressedSize = 0;
    std::uint64_t headerOffset = 0; ///< of the local header in the source
    std::uint64_t regionEnd = 0;    ///< where the next entry or the directory begins
    std::uint32_t crc = 0;
    Method method = Method::stored;
    std::uint16_t flags = 0;

    bool hasUtf8Name() const noexcept { return (flags & 0x0800U) != 0; }

    /// MS-DOS directories; ISO/IEC 29500-2 M3.7 calls them no parts.
    bool isDirectory() const noexcept { return name.ends_with('/'); }
};

/// An entry's bytes as they stand in an archive, and what must come out of them. Equal ones unpack to equal bytes.
struct PackedEntry
{
    std::span<const std::byte> bytes;
    std::uint64_t size = 0;
    std::uint32_t crc = 0;
    Method method = Method::stored;

    /// The same bytes, as they are compared fastest.
    std::string_view text() const noexcept { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

    bool operator==(const PackedEntry& other) const noexcept
    {
        return crc == other.crc && size == other.size && method == other.method && text() == other.text();
    }
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
