#include "host/core/opc/zip/end_record.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/limits.h"

#include <algorithm>
#include <array>
#include <optional>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

constexpr std::uint64_t firstLook = 8 * 1024;
constexpr std::uint64_t longestComment = 0xffff;

/// What the records say, before it is compared with where they stand.
struct Claims
{
    std::uint64_t entriesOnDisk = 0;
    std::uint64_t entries = 0;
    std::uint64_t directorySize = 0;
    std::uint64_t directoryOffset = 0;
    std::uint64_t disk = 0;
    std::uint64_t directoryDisk = 0;
};

class EndRecordReader
{
public:
    explicit EndRecordReader(SourceTail& tail) : m_tail{tail} {}

    Expected<EndRecord, ErrorCode2> read();

private:
    Expected<void, ErrorCode2> find();
    std::optional<std::uint64_t> candidate(bool atTheEnd) const;
    void readClaims(Bytes record);
    Expected<void, ErrorCode2> readZip64();
    Expected<std::uint64_t, ErrorCode2> findZip64Record(std::uint64_t told, std::uint64_t locator);
    bool adopt(Bytes zip64Record);
    Expected<EndRecord, ErrorCode2> place() const;
    Expected<void, ErrorCode2> checkPrefix(std::uint64_t prefix) const;

    ErrorCode2 failure(OpcError error, std::string_view reason) const
    {
        return Errors::makeError(error, m_tail.source().displayName(), reason);
    }

    SourceTail& m_tail;
    std::uint64_t m_position = 0; ///< of the end record
    std::uint64_t m_end = 0;      ///< behind its comment
    std::uint64_t m_directoryEnd = 0;
    std::optional<std::uint64_t> m_zip64Prefix;
    std::string m_comment;
    Claims m_claims;
};

/// The last place that looks like an end record.
/// @param atTheEnd  whether its comment must end where the file does
std::optional<std::uint64_t> EndRecordReader::candidate(bool atTheEnd) const
{
    const Bytes bytes = m_tail.bytes();
    if (bytes.size() < RecordSize::endRecord)
        return std::nullopt;
    for (std::size_t i = bytes.size() - RecordSize::endRecord + 1; i-- > 0;) {
        if (u32(bytes, i) != Signature::endRecord)
            continue;
        const std::size_t end = i + RecordSize::endRecord + u16(bytes, i + 20);
        if (atTheEnd ? end == bytes.size() : end < bytes.size())
            return m_tail.begin() + i;
    }
    return std::nullopt;
}

Expected<void, ErrorCode2> EndRecordReader::find()
{
    std::optional<std::uint64_t> found;
    for (const auto& [length, atTheEnd] : {std::pair{firstLook, true},
                                           {RecordSize::endRecord + longestComment, true},
                                           {RecordSize::endRecord + longestComment, false}}) {
        if (auto loaded = m_tail.load(length); !loaded)
            return loaded;
        found = candidate(atTheEnd);
        if (found)
            break;
    }
    if (!found)
        return failure(OpcError::notAnArchive, "there is no end record (ZIP application note 4.3.16)");
    m_position = *found;
    const Bytes record = m_tail.bytes().subspan(m_position - m_tail.begin());
    m_comment = textOf(record.subspan(RecordSize::endRecord, u16(record, 20)));
    m_end = m_position + RecordSize::endRecord + m_comment.size();
    readClaims(record);
    return {};
}

void EndRecordReader::readClaims(Bytes record)
{
    m_claims = {.entriesOnDisk = u16(record, 8),
                .entries = u16(record, 10),
                .directorySize = u32(record, 12),
                .directoryOffset = u32(record, 16),
                .disk = u16(record, 4),
                .directoryDisk = u16(record, 6)};
    m_directoryEnd = m_position;
}

/// Where the ZIP64 record really is: as it is told, or shifted by what stands before the archive.
Expected<std::uint64_t, ErrorCode2> EndRecordReader::findZip64Record(std::uint64_t told, std::uint64_t locator)
{
    for (const std::uint64_t position : {told, locator - RecordSize::zip64EndRecord}) {
        std::array<std::byte, 12> head{};
        if (locator < RecordSize::zip64EndRecord || position > locator - RecordSize::zip64EndRecord)
            continue;
        if (auto done = m_tail.readAt(position, head); !done)
            return done.error();
        // the record's size does not count its first 12 bytes
        if (u32(head, 0) == Signature::zip64EndRecord && u64(head, 4) == locator - position - 12)
            return position;
    }
    return failure(OpcError::damagedArchive,
                   "the ZIP64 end record is not where its locator says (ZIP application note 4.3.15)");
}

/// Takes over the 64-bit values. Those that had room in the end record must be the same there.
bool EndRecordReader::adopt(Bytes record)
{
    const Claims small = m_claims;
    m_claims = {.entriesOnDisk = u64(record, 24),
                .entries = u64(record, 32),
                .directorySize = u64(record, 40),
                .directoryOffset = u64(record, 48),
                .disk = u32(record, 16),
                .directoryDisk = u32(record, 20)};
    const auto agree = [](std::uint64_t narrow, std::uint64_t wide, std::uint64_t saturated) {
        return narrow == saturated || narrow == wide;
    };
    return agree(small.entries, m_claims.entries, saturated16) &&
           agree(small.entriesOnDisk, m_claims.entriesOnDisk, saturated16) &&
           agree(small.directorySize, m_claims.directorySize, saturated32) &&
           agree(small.directoryOffset, m_claims.directoryOffset, saturated32) &&
           agree(small.disk, m_claims.disk, saturated16) &&
           agree(small.directoryDisk, m_claims.directoryDisk, saturated16);
}

Expected<void, ErrorCode2> EndRecordReader::readZip64()
{
    std::array<std::byte, RecordSize::zip64Locator> locator{};
    if (m_position < locator.size())
        return {};
    const std::uint64_t locatorPosition = m_position - locator.size();
    if (auto done = m_tail.readAt(locatorPosition, locator); !done)
        return done;
    // Saturated values without a locator are plain ones: 65,535 entries need none.
    if (u32(locator, 0) != Signature::zip64Locator)
        return {};
    if (u32(locator, 16) > 1)
        return failure(OpcError::unsupportedEntry, "it spans several disks, ISO/IEC 29500-2 Annex C");
    const std::uint64_t told = u64(locator, 8);
    const auto position = findZip64Record(told, locatorPosition);
    if (!position)
        return position.error();
    std::array<std::byte, RecordSize::zip64EndRecord> record{};
    if (auto done = m_tail.readAt(*position, record); !done)
        return done;
    if ((u16(record, 14) & 0xffU) > zip64Version)
        return failure(OpcError::unsupportedEntry, "it needs a ZIP version above 4.5, ISO/IEC 29500-2 Annex C");
    if (*position < told || !adopt(record))
        return failure(OpcError::damagedArchive,
                       "the end record and the ZIP64 end record differ (ZIP application note 4.4.1.4)");
    m_zip64Prefix = *position - told;
    m_directoryEnd = *position;
    return {};
}

/// A stored package within a package has an end record too. When that of the outer one is lost, what is within must
/// not pass for the whole.
Expected<void, ErrorCode2> EndRecordReader::checkPrefix(std::uint64_t prefix) const
{
    std::array<std::byte, 4> first{};
    if (prefix == 0)
        return {};
    if (auto done = m_tail.readAt(0, first); !done)
        return done;
    if (m_end == m_tail.source().size() && u32(first, 0) != Signature::localHeader)
        return {};
    return failure(OpcError::damagedArchive,
                   "the directory is not where the end record says, or the file has lost its "
                   "own end and shows that of an archive within (ZIP application note 4.3.16)");
}

Expected<EndRecord, ErrorCode2> EndRecordReader::place() const
{
    const Claims& claims = m_claims;
    if (claims.disk != 0 || claims.directoryDisk != 0 || claims.entries != claims.entriesOnDisk)
        return failure(OpcError::unsupportedEntry, "it spans several disks, ISO/IEC 29500-2 Annex C");
    if (claims.directorySize > m_directoryEnd || claims.directoryOffset > m_directoryEnd - claims.directorySize)
        return failure(OpcError::damagedArchive,
                       "the directory is told to lie outside the file (ZIP application note 4.3.16)");
    EndRecord result{.directoryOffset = m_directoryEnd - claims.directorySize,
                     .directorySize = claims.directorySize,
                     .entries = claims.entries,
                     .prefix = m_directoryEnd - claims.directorySize - claims.directoryOffset,
                     .behind = m_tail.source().size() - m_end,
                     .comment = m_comment};
    if (m_zip64Prefix && *m_zip64Prefix != result.prefix)
        return failure(OpcError::damagedArchive,
                       "the end records and the directory are not where they say (ZIP application note 4.3.15)");
    if (claims.directorySize / RecordSize::directoryHeader < claims.entries)
        return failure(OpcError::damagedArchive,
                       "the directory is too small for its entries (ZIP application note 4.3.16)");
    if (claims.entries > Limits::entries)
        return failure(OpcError::limitExceeded, "too many entries");
    if (auto checked = checkPrefix(result.prefix); !checked)
        return checked.error();
    return result;
}

Expected<EndRecord, ErrorCode2> EndRecordReader::read()
{
    return find().andThen([this] { return readZip64(); }).andThen([this] { return place(); });
}

} // namespace

Expected<void, ErrorCode2> SourceTail::load(std::uint64_t length)
{
    length = std::min(length, m_source.size());
    if (length <= m_bytes.size())
        return {};
    m_begin = m_source.size() - length;
    m_bytes = m_source.inMemory(m_begin, length);
    if (!m_bytes.empty())
        return {};
    m_buffer.resize(length);
    m_bytes = m_buffer;
    return m_source.readAt(m_begin, m_buffer);
}

Expected<void, ErrorCode2> SourceTail::readAt(std::uint64_t offset, std::span<std::byte> target) const
{
    if (offset < m_begin)
        return m_source.readAt(offset, target);
    const Bytes piece = bytes().subspan(offset - m_begin, target.size());
    std::copy(piece.begin(), piece.end(), target.begin());
    return {};
}

Expected<EndRecord, ErrorCode2> readEndRecord(SourceTail& tail)
{
    return EndRecordReader{tail}.read();
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
