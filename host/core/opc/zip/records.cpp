#include "host/core/opc/zip/records.h"

namespace Kelvaris::System::IO::OpcPackaging::Zip {

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
    for (int i = 0; i < width; ++i, value >>= 8U)
        m_bytes.push_back(static_cast<std::byte>(value & 0xffU));
    return *this;
}

RecordBuilder& RecordBuilder::bytes(Bytes bytes)
{
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return *this;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
