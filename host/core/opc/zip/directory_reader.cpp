#include "host/core/opc/zip/directory_reader.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <numeric>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

constexpr std::size_t smallestDescriptor = 12;

/// The fewest bytes that an entry takes from its local header on; its extra field there is not known yet.
std::uint64_t smallestRegion(const Entry& entry)
{
    const std::size_t descriptor = (entry.flags & Flag::dataDescriptor) != 0 ? smallestDescriptor : 0;
    return RecordSize::localHeader + entry.name.size() + entry.compressedSize + descriptor;
}

} // namespace

std::string describeEntry(const std::string& archive, const Entry& entry)
{
    return Text::displayedIn(archive, entry.name);
}

ErrorCode2 DirectoryReader::failure(OpcError error, std::string_view reason) const
{
    return Errors::makeError(error, m_displayName, reason);
}

ErrorCode2 DirectoryReader::failure(OpcError error, const Entry& entry, std::string_view reason) const
{
    return Errors::makeError(error, describeEntry(m_displayName, entry), reason);
}

Expected<std::vector<Entry>, ErrorCode2> DirectoryReader::read()
{
    std::vector<Entry> entries;
    entries.reserve(m_place.entries);
    for (std::uint64_t i = 0; i < m_place.entries; ++i) {
        auto entry = readEntry();
        if (!entry)
            return entry.error();
        if (*entry)
            entries.push_back(**entry);
    }
    if (auto ended = checkEnd(); !ended)
        return ended.error();
    if (auto placed = placeEntries(entries); !placed)
        return placed.error();
    return entries;
}

/// @return  nothing for an entry whose fault was passed over
Expected<std::optional<Entry>, ErrorCode2> DirectoryReader::readEntry()
{
    if (m_rest.size() < RecordSize::directoryHeader || u32(m_rest, 0) != Signature::directoryHeader)
        return failure(OpcError::damagedArchive, "the directory is damaged (ZIP application note 4.3.12)");
    const std::size_t nameSize = u16(m_rest, 28);
    const std::size_t extraSize = u16(m_rest, 30);
    const std::size_t recordSize = RecordSize::directoryHeader + nameSize + extraSize + u16(m_rest, 32);
    if (recordSize > m_rest.size())
        return failure(OpcError::damagedArchive, "the directory ends within an entry (ZIP application note 4.3.12)");
    const Bytes record = m_rest.first(recordSize);
    m_rest = m_rest.subspan(recordSize);
    Entry entry{.name = textOf(record.subspan(RecordSize::directoryHeader, nameSize)),
                .record = record,
                .size = u32(record, 24),
                .compressedSize = u32(record, 20),
                .headerOffset = u32(record, 42),
                .crc = u32(record, 16),
                .method = Method{u16(record, 10)},
                .flags = u16(record, 8)};
    auto checked = checkSupported(entry).andThen(
        [&] { return resolveZip64(entry, record.subspan(RecordSize::directoryHeader + nameSize, extraSize)); });
    if (checked)
        return std::optional{entry};
    if (auto passed = passOver(m_faults, checked.error()); !passed)
        return passed.error();
    return std::optional<Entry>{};
}

Expected<void, ErrorCode2> DirectoryReader::checkSupported(const Entry& entry) const
{
    constexpr unsigned encrypted = Flag::encrypted | Flag::stronglyEncrypted | Flag::maskedHeader;
    if ((entry.flags & encrypted) != 0)
        return failure(OpcError::encryptedEntry, entry, "ISO/IEC 29500-2 M3.9");
    if (entry.method != Method::stored && entry.method != Method::deflated)
        return failure(OpcError::unsupportedEntry, entry,
                       "compression method " + std::to_string(static_cast<int>(entry.method)) +
                           ", ISO/IEC 29500-2 Annex C");
    if ((entry.flags & Flag::patched) != 0)
        return failure(OpcError::unsupportedEntry, entry, "compressed patched data, ISO/IEC 29500-2 Annex C");
    // the other byte names the system of the writer with some writers
    if ((u16(entry.record, 6) & 0xffU) > zip64Version)
        return failure(OpcError::unsupportedEntry, entry, "it needs a ZIP version above 4.5, ISO/IEC 29500-2 Annex C");
    return {};
}

/// A field that is saturated stands in the ZIP64 extra field, in this order; the others do not stand there.
Expected<void, ErrorCode2> DirectoryReader::resolveZip64(Entry& entry, Bytes extra) const
{
    std::uint64_t disk = u16(entry.record, 34);
    const bool hasDisk = disk == saturated16;
    if (entry.size == saturated32 || entry.compressedSize == saturated32 || entry.headerOffset == saturated32 ||
        hasDisk) {
        Bytes block = extraBlock(extra, zip64ExtraId);
        bool complete = true;
        const auto take = [&](std::uint64_t& field, bool saturated, std::size_t width) {
            if (!saturated)
                return;
            complete = complete && block.size() >= width;
            if (!complete)
                return;
            field = numberAt(block, 0, width);
            block = block.subspan(width);
        };
        take(entry.size, entry.size == saturated32, 8);
        take(entry.compressedSize, entry.compressedSize == saturated32, 8);
        take(entry.headerOffset, entry.headerOffset == saturated32, 8);
        take(disk, hasDisk, 4);
        if (!complete)
            return failure(OpcError::damagedArchive, entry,
                           "the ZIP64 extra field is missing or too short (ZIP application note 4.5.3)");
    }
    if (disk != 0)
        return failure(OpcError::unsupportedEntry, entry, "it is on another disk, ISO/IEC 29500-2 Annex C");
    if (entry.method == Method::stored && entry.size != entry.compressedSize)
        return failure(OpcError::damagedArchive, entry,
                       "it is stored, and its two sizes differ (ZIP application note 4.4.8)");
    if (entry.headerOffset > m_place.directoryOffset - m_place.prefix)
        return failure(OpcError::damagedArchive, entry,
                       "it is told to lie outside the file (ZIP application note 4.4.16)");
    entry.headerOffset += m_place.prefix;
    return {};
}

Expected<void, ErrorCode2> DirectoryReader::checkEnd() const
{
    if (m_rest.empty())
        return {};
    // the one thing that may follow the entries: a signature, of which nothing is known but its length
    const bool isSignature =
        m_rest.size() >= 6 && u32(m_rest, 0) == Signature::directorySignature && m_rest.size() == 6U + u16(m_rest, 4);
    if (isSignature)
        return {};
    return failure(OpcError::damagedArchive,
                   "the directory holds more than the end record counts (ZIP application note 4.4.22)");
}

Expected<void, ErrorCode2> DirectoryReader::checkRegion(const Entry& entry) const
{
    const std::uint64_t room = entry.regionEnd - entry.headerOffset;
    if (entry.compressedSize <= room && smallestRegion(entry) <= room)
        return {};
    return failure(OpcError::damagedArchive, entry,
                   entry.regionEnd == m_place.directoryOffset
                       ? "it reaches into the directory or beyond the file (ZIP application note 4.3.6)"
                       : "it overlaps another entry (ZIP application note 4.3.6)");
}

Expected<void, ErrorCode2> DirectoryReader::placeEntries(std::vector<Entry>& entries) const
{
    const auto before = [&](std::size_t left, std::size_t right) {
        return entries[left].headerOffset < entries[right].headerOffset;
    };
    std::vector<std::size_t> order(entries.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (!std::is_sorted(order.begin(), order.end(), before))
        std::stable_sort(order.begin(), order.end(), before);
    std::uint64_t end = m_place.directoryOffset;
    for (auto it = order.rbegin(); it != order.rend(); ++it) {
        Entry& entry = entries[*it];
        entry.regionEnd = end;
        if (auto checked = checkRegion(entry); !checked) {
            if (auto passed = passOver(m_faults, checked.error()); !passed)
                return passed;
            entry.regionEnd = entry.headerOffset;
        }
        end = entry.headerOffset;
    }
    // what was passed over has no room, which no entry has that can be read
    if (m_faults != nullptr)
        std::erase_if(entries, [](const Entry& entry) { return entry.regionEnd == entry.headerOffset; });
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
