#include "host/core/opc/zip/archive_writer.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/zip/records.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <cassert>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

constexpr std::uint16_t storedVersion = 10;
constexpr std::uint16_t deflatedVersion = 20;

/// MS-DOS, which has the fewest attributes.
constexpr std::uint16_t neutralSystem = 0;

/// 1980-01-01 00:00, the first that there is.
constexpr std::uint16_t fixedTime = 0;
constexpr std::uint16_t fixedDate = 0x21;

/// M3.8: name, extra field and comment of an entry share it.
constexpr std::size_t longestVariablePart = 0xffff;

bool needs64Bits(std::uint64_t value)
{
    return value >= saturated32;
}

std::uint64_t narrowed(std::uint64_t value)
{
    return std::min<std::uint64_t>(value, saturated32);
}

/// What the two headers of a new entry have in common.
struct NewEntry
{
    std::string_view name;
    Bytes extra;
    const Payload& payload;
    std::uint64_t offset;

    bool hasWideSizes() const { return needs64Bits(payload.size()) || needs64Bits(payload.compressedSize()); }

    std::uint16_t version(bool isWide) const
    {
        if (isWide)
            return zip64Version;
        return payload.method() == Method::stored ? storedVersion : deflatedVersion;
    }

    std::uint64_t size32() const { return hasWideSizes() ? saturated32 : payload.size(); }
    std::uint64_t compressedSize32() const { return hasWideSizes() ? saturated32 : payload.compressedSize(); }

    /// @param withOffset  whether this is the extra field of the directory, and the offset does not fit
    RecordBuilder extraField(bool withOffset) const
    {
        const std::size_t size = (hasWideSizes() ? 16U : 0U) + (withOffset ? 8U : 0U);
        RecordBuilder field;
        if (size > 0)
            field.u16(zip64ExtraId).u16(size);
        if (hasWideSizes())
            field.u64(payload.size()).u64(payload.compressedSize());
        if (withOffset)
            field.u64(offset);
        field.bytes(extra);
        return field;
    }

    void addCommon(RecordBuilder& record, std::uint16_t versionNeeded, std::size_t extraSize) const
    {
        record.u16(versionNeeded)
            .u16(Text::isAscii(name) ? 0U : Flag::utf8Name)
            .u16(static_cast<std::uint16_t>(payload.method()))
            .u16(fixedTime)
            .u16(fixedDate)
            .u32(payload.crc())
            .u32(compressedSize32())
            .u32(size32())
            .u16(name.size())
            .u16(extraSize);
    }
};

RecordBuilder localHeader(const NewEntry& entry)
{
    const RecordBuilder extra = entry.extraField(false);
    RecordBuilder record;
    record.u32(Signature::localHeader);
    entry.addCommon(record, entry.version(entry.hasWideSizes()), extra.view().size());
    record.bytes(bytesOf(entry.name)).bytes(extra.view());
    return record;
}

RecordBuilder directoryHeader(const NewEntry& entry)
{
    const bool withOffset = needs64Bits(entry.offset);
    const std::uint16_t version = entry.version(withOffset || entry.hasWideSizes());
    const RecordBuilder extra = entry.extraField(withOffset);
    RecordBuilder record;
    record.u32(Signature::directoryHeader).u16(neutralSystem << 8U | std::max(version, deflatedVersion));
    entry.addCommon(record, version, extra.view().size());
    record.u16(0).u16(0).u16(0).u32(0).u32(narrowed(entry.offset)); // comment, disk, attributes
    record.bytes(bytesOf(entry.name)).bytes(extra.view());
    return record;
}

/// A directory's record, taken apart to give it another offset.
class MovedRecord
{
public:
    explicit MovedRecord(Bytes record)
        : m_record{record}, m_name{record.subspan(RecordSize::directoryHeader, u16(record, 28))},
          m_extra{record.subspan(RecordSize::directoryHeader + m_name.size(), u16(record, 30))},
          m_comment{record.subspan(RecordSize::directoryHeader + m_name.size() + m_extra.size())}
    {
    }

    RecordBuilder at(std::uint64_t offset) const
    {
        const bool wasWide = u32(m_record, 42) == saturated32;
        if (wasWide)
            return build(saturated32, withOffset(offset), u16(m_record, 6));
        if (needs64Bits(offset))
            return build(saturated32, withAddedOffset(offset), zip64Version);
        return build(offset, {m_extra.begin(), m_extra.end()}, u16(m_record, 6));
    }

    std::size_t variablePart() const { return m_record.size() - RecordSize::directoryHeader; }

private:
    using Field = std::vector<std::byte>;

    /// Sizes that the ZIP64 field holds; the offset stands behind them.
    std::size_t sizesBefore() const
    {
        return (u32(m_record, 24) == saturated32 ? 8U : 0U) + (u32(m_record, 20) == saturated32 ? 8U : 0U);
    }

    Field withOffset(std::uint64_t offset) const
    {
        Field extra{m_extra.begin(), m_extra.end()};
        const Bytes block = extraBlock(m_extra, zip64ExtraId);
        const auto place = static_cast<std::size_t>(block.data() - m_extra.data()) + sizesBefore();
        RecordBuilder number;
        number.u64(offset);
        std::copy(number.view().begin(), number.view().end(), extra.begin() + static_cast<std::ptrdiff_t>(place));
        return extra;
    }

    /// A new ZIP64 field in front, with what an old one held for this record.
    Field withAddedOffset(std::uint64_t offset) const
    {
        const Bytes old = extraBlock(m_extra, zip64ExtraId);
        const std::size_t before = sizesBefore();
        const Bytes disk = u16(m_record, 34) == saturated16 ? old.subspan(before, 4) : Bytes{};
        RecordBuilder field;
        field.u16(zip64ExtraId).u16(before + 8 + disk.size()).bytes(old.first(before)).u64(offset).bytes(disk);
        if (old.data() == nullptr)
            return concatenated(field.view(), m_extra, {});
        const auto begin = static_cast<std::size_t>(old.data() - m_extra.data()) - 4;
        return concatenated(field.view(), m_extra.first(begin), m_extra.subspan(begin + 4 + old.size()));
    }

    static Field concatenated(Bytes first, Bytes second, Bytes third)
    {
        RecordBuilder all;
        all.bytes(first).bytes(second).bytes(third);
        return {all.view().begin(), all.view().end()};
    }

    RecordBuilder build(std::uint64_t offset32, const Field& extra, std::uint16_t version) const
    {
        RecordBuilder record;
        record.bytes(m_record.first(6)).u16(version).bytes(m_record.subspan(8, 22));
        record.u16(extra.size()).bytes(m_record.subspan(32, 10)).u32(offset32);
        record.bytes(m_name).bytes(extra).bytes(m_comment);
        return record;
    }

    Bytes m_record;
    Bytes m_name;
    Bytes m_extra;
    Bytes m_comment;
};

} // namespace

ArchiveWriter::ArchiveWriter(Disk::ReplacementFile& file) : m_file{file}
{
    assert(file.position() == 0);
}

ArchiveWriter::~ArchiveWriter() = default;

ErrorCode2 ArchiveWriter::tooLong(std::string_view name) const
{
    return Errors::makeError(OpcError::invalidPartName, m_file.displayName() + ": " + Text::displayed(name),
                             "name and extra field are longer than 65,535 bytes, ISO/IEC 29500-2 M3.8");
}

Expected<void, ErrorCode2> ArchiveWriter::add(std::string_view name, const Payload& payload,
                                              std::span<const std::byte> extra)
{
    const NewEntry entry{.name = name, .extra = extra, .payload = payload, .offset = m_file.position()};
    const RecordBuilder header = directoryHeader(entry);
    if (header.view().size() - RecordSize::directoryHeader > longestVariablePart)
        return tooLong(name);
    auto written = m_file.write(localHeader(entry).view()).andThen([&] {
        return payload.packed().copyTo(m_file, 0, payload.compressedSize());
    });
    if (written)
        addToDirectory(header.view());
    return written;
}

Expected<void, ErrorCode2> ArchiveWriter::copyEntry(const Archive& archive, std::size_t index)
{
    const Entry& entry = archive.entries()[index];
    const RecordBuilder header = MovedRecord{entry.record}.at(m_file.position());
    if (header.view().size() - RecordSize::directoryHeader > longestVariablePart &&
        header.view().size() > entry.record.size())
        return tooLong(entry.name);
    auto copied = archive.copyLocalEntry(index, m_file);
    if (copied)
        addToDirectory(header.view());
    return copied;
}

void ArchiveWriter::addToDirectory(std::span<const std::byte> record)
{
    m_directory.insert(m_directory.end(), record.begin(), record.end());
    ++m_entries;
}

Expected<void, ErrorCode2> ArchiveWriter::finish(std::string_view comment)
{
    assert(comment.size() <= 0xffff);
    const std::uint64_t offset = m_file.position();
    const std::uint64_t size = m_directory.size();
    RecordBuilder end;
    if (m_entries >= saturated16 || needs64Bits(size) || needs64Bits(offset)) {
        end.u32(Signature::zip64EndRecord).u64(RecordSize::zip64EndRecord - 12).u16(zip64Version).u16(zip64Version);
        end.u32(0).u32(0).u64(m_entries).u64(m_entries).u64(size).u64(offset);
        end.u32(Signature::zip64Locator).u32(0).u64(offset + size).u32(1);
    }
    const std::uint64_t entries = std::min<std::uint64_t>(m_entries, saturated16);
    end.u32(Signature::endRecord).u16(0).u16(0).u16(entries).u16(entries);
    end.u32(narrowed(size)).u32(narrowed(offset)).u16(comment.size()).bytes(bytesOf(comment));
    return m_file.write(m_directory).andThen([&] { return m_file.write(end.view()); });
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
