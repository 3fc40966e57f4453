#include "host/core/opc/zip/local_header.h"

#include <algorithm>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

/// The rest says how the bytes were compressed, and some writers set it in one place only.
constexpr unsigned comparedFlags = Flag::encrypted | Flag::dataDescriptor | Flag::patched | Flag::stronglyEncrypted |
                                   Flag::utf8Name | Flag::maskedHeader;

std::size_t nameSize(Bytes header) noexcept
{
    return u16(header, 26);
}

} // namespace

std::size_t LocalHeader::sizeOf(Bytes bytes) noexcept
{
    return RecordSize::localHeader + nameSize(bytes) + u16(bytes, 28);
}

LocalHeader::LocalHeader(const Entry& entry, Bytes bytes) noexcept
    : m_entry{entry}, m_bytes{bytes}, m_zip64{extraBlock(bytes.subspan(RecordSize::localHeader + nameSize(bytes)),
                                                         zip64ExtraId)}
{
}

const char* LocalHeader::difference() const noexcept
{
    if (textOf(m_bytes.subspan(RecordSize::localHeader, nameSize(m_bytes))) != m_entry.name)
        return "the names in the local header and the directory differ, ISO/IEC 29500-2 M3.14";
    if (u16(m_bytes, 8) != static_cast<std::uint16_t>(m_entry.method))
        return "the compression methods in the local header and the directory differ, ISO/IEC 29500-2 M3.14";
    if (((u16(m_bytes, 6) ^ m_entry.flags) & comparedFlags) != 0)
        return "the flags in the local header and the directory differ, ISO/IEC 29500-2 M3.14";
    // with a data descriptor the header may leave open what it did not know
    const bool mayBeOpen = (m_entry.flags & Flag::dataDescriptor) != 0;
    const std::uint32_t crc = u32(m_bytes, 14);
    if (crc != m_entry.crc && !(mayBeOpen && crc == 0))
        return "the checksums in the local header and the directory differ, ISO/IEC 29500-2 M3.14";
    if (!sizesAgree())
        return "the sizes in the local header and the directory differ, ISO/IEC 29500-2 M3.14";
    return nullptr;
}

bool LocalHeader::sizesAgree() const noexcept
{
    const bool mayBeOpen = (m_entry.flags & Flag::dataDescriptor) != 0;
    Bytes wide = m_zip64;
    const auto agrees = [&](std::size_t offset, std::uint64_t expected) {
        std::uint64_t told = u32(m_bytes, offset);
        if (told == saturated32 && wide.size() >= 8) {
            told = u64(wide, 0);
            wide = wide.subspan(8);
        }
        return told == expected || (mayBeOpen && (told == 0 || told == saturated32));
    };
    const bool size = agrees(22, m_entry.size);
    return agrees(18, m_entry.compressedSize) && size;
}

std::optional<std::size_t> LocalHeader::descriptorSize(Bytes behind) const noexcept
{
    for (const std::size_t signature : {4U, 0U}) {
        for (const std::size_t width : {4U, 8U}) {
            const std::size_t size = signature + 4 + 2 * width;
            if (behind.size() < size || (signature > 0 && u32(behind, 0) != Signature::dataDescriptor))
                continue;
            if (u32(behind, signature) == m_entry.crc &&
                numberAt(behind, signature + 4, width) == m_entry.compressedSize &&
                numberAt(behind, signature + 4 + width, width) == m_entry.size)
                return size;
        }
    }
    return std::nullopt;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
