#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// The records of a ZIP file (APPNOTE 4.3 and 4.5): little-endian, without padding. Reader and writer share them.
namespace Kelvaris::System::IO::OpcPackaging::Zip {

using Bytes = std::span<const std::byte>;

namespace Signature {
inline constexpr std::uint32_t localHeader = 0x04034b50;
inline constexpr std::uint32_t dataDescriptor = 0x08074b50;
inline constexpr std::uint32_t directoryHeader = 0x02014b50;
inline constexpr std::uint32_t directorySignature = 0x05054b50;
inline constexpr std::uint32_t endRecord = 0x06054b50;
inline constexpr std::uint32_t zip64EndRecord = 0x06064b50;
inline constexpr std::uint32_t zip64Locator = 0x07064b50;
} // namespace Signature

/// Bytes of the records, without names, extra fields and comments.
namespace RecordSize {
inline constexpr std::size_t localHeader = 30;
inline constexpr std::size_t directoryHeader = 46;
inline constexpr std::size_t endRecord = 22;
inline constexpr std::size_t zip64EndRecord = 56;
inline constexpr std::size_t zip64Locator = 20;
} // namespace RecordSize

namespace Flag {
inline constexpr std::uint16_t encrypted = 0x0001;
inline constexpr std::uint16_t dataDescriptor = 0x0008;
inline constexpr std::uint16_t patched = 0x0020;
inline constexpr std::uint16_t stronglyEncrypted = 0x0040;
inline constexpr std::uint16_t utf8Name = 0x0800;
inline constexpr std::uint16_t maskedHeader = 0x2000;
} // namespace Flag

/// "See the ZIP64 record or extra field."
inline constexpr std::uint16_t saturated16 = 0xffff;
inline constexpr std::uint32_t saturated32 = 0xffffffff;

inline constexpr std::uint16_t zip64ExtraId = 0x0001;

/// The highest version that ISO/IEC 29500-2 Annex C allows: 4.5, ZIP64.
inline constexpr std::uint16_t zip64Version = 45;

/// Little-endian numbers; the caller knows that there are enough bytes.
inline std::uint64_t numberAt(Bytes bytes, std::size_t offset, std::size_t width) noexcept
{
    std::uint64_t value = 0;
    for (std::size_t i = width; i-- > 0;)
        value = value << 8U | std::to_integer<std::uint64_t>(bytes[offset + i]);
    return value;
}

inline std::uint16_t u16(Bytes bytes, std::size_t offset) noexcept
{
    return static_cast<std::uint16_t>(numberAt(bytes, offset, 2));
}

inline std::uint32_t u32(Bytes bytes, std::size_t offset) noexcept
{
    return static_cast<std::uint32_t>(numberAt(bytes, offset, 4));
}

inline std::uint64_t u64(Bytes bytes, std::size_t offset) noexcept
{
    return numberAt(bytes, offset, 8);
}

inline std::string_view textOf(Bytes bytes) noexcept
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline Bytes bytesOf(std::string_view text) noexcept
{
    return std::as_bytes(std::span{text});
}

/// The content of the first block `id` of an extra field; empty when there is none. Bytes behind the last whole block
/// are padding, which some writers leave there.
Bytes extraBlock(Bytes extra, std::uint16_t id) noexcept;

/// Builds records.
class RecordBuilder
{
public:
    RecordBuilder& u16(std::uint64_t value) { return number<2>(value); }
    RecordBuilder& u32(std::uint64_t value) { return number<4>(value); }
    RecordBuilder& u64(std::uint64_t value) { return number<8>(value); }

    RecordBuilder& bytes(Bytes bytes)
    {
        std::copy_n(bytes.data(), bytes.size(), room(bytes.size()));
        return *this;
    }

    Bytes view() const noexcept { return m_large.empty() ? Bytes{m_usual}.first(m_size) : Bytes{m_large}; }

private:
    /// Of a record with its name.
    static constexpr std::size_t usualSize = 256;

    template <std::size_t width>
    RecordBuilder& number(std::uint64_t value)
    {
        std::byte* const target = room(width);
        for (std::size_t i = 0; i < width; ++i)
            target[i] = static_cast<std::byte>(value >> (8 * i) & 0xffU);
        return *this;
    }

    /// For so many bytes more.
    std::byte* room(std::size_t size)
    {
        const std::size_t begin = m_size;
        if (begin + size > usualSize && m_large.empty())
            m_large.assign(m_usual.begin(), m_usual.begin() + static_cast<std::ptrdiff_t>(begin));
        m_size += size;
        if (m_size <= usualSize)
            return m_usual.data() + begin;
        m_large.resize(m_size);
        return m_large.data() + begin;
    }

    std::array<std::byte, usualSize> m_usual;
    std::vector<std::byte> m_large; ///< instead, when there is more
    std::size_t m_size = 0;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
