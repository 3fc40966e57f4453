#include "host/core/opc/zip/records.h"

#include <array>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

/// Of a record with its name.
constexpr std::size_t usualSize = 128;

} // namespace

Bytes extraBlock(Bytes extra, std::uint16_t id) noexcept
{
    while (extra.size() >= 4) {
        const std::size_t length = u16(extra, 2);
        if (length > extra.size() - 4)
            return {};
        if (u16(extra, 0) == id)
            return extra.subspan(4, length);
        extra = extra.subspan(4 + length);
    }
    return {};
}

RecordBuilder& RecordBuilder::number(std::uint64_t value, int width)
{
    if (m_bytes.empty())
        m_bytes.reserve(usualSize);
    std::array<std::byte, sizeof value> little{};
    for (std::byte& byte : little) {
        byte = static_cast<std::byte>(value & 0xffU);
        value >>= 8U;
    }
    m_bytes.insert(m_bytes.end(), little.begin(), little.begin() + width);
    return *this;
}

RecordBuilder& RecordBuilder::bytes(Bytes bytes)
{
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return *this;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
