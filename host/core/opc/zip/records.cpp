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

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
