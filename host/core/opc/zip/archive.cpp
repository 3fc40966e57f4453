#include "host/core/opc/zip/archive.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/zip/directory_reader.h"
#include "host/core/opc/zip/end_record.h"
#include "host/core/opc/zip/local_header.h"
#include "host/core/opc/zip/packed_data.h"
#include "host/core/opc/zip/records.h"

#include <algorithm>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

/// Room for the extra fields that are usual in local headers, so that one read does.
constexpr std::size_t usualExtra = 64;
constexpr std::uint64_t longestDescriptor = 24;

/// Entries up to this size are read in one piece, header and all.
constexpr std::uint64_t wholeRegion = std::uint64_t{256} << 10;

/// A piece of a source that is in memory, at its place in the source. The bytes belong to the caller.
class RegionSource final : public ByteSource
{
public:
    RegionSource(std::uint64_t offset, Bytes bytes) noexcept
        : ByteSource{offset + bytes.size(), {}}, m_offset{offset}, m_bytes{bytes}
    {
    }

    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        std::ranges::copy(inMemory(offset, target.size()), target.begin());
        return {};
    }

    Bytes inMemory(std::uint64_t offset, std::uint64_t length) const noexcept override
    {
        return m_bytes.subspan(offset - m_offset, length);
    }

private:
    std::uint64_t m_offset;
    Bytes m_bytes;
};

/// A stretch of a source: as it stands in memory, or read into `buffer`.
Expected<Bytes, ErrorCode2> stretchOf(const ByteSource& source, std::uint64_t offset, std::uint64_t length,
                                      std::vector<std::byte>& buffer)
{
    if (const Bytes present = source.inMemory(offset, length); !present.empty())
        return present;
    buffer.resize(length);
    if (auto done = source.readAt(offset, buffer); !done)
        return done.error();
    return Bytes{buffer};
}

} // namespace

Archive::Archive(ByteSourcePtr source) noexcept : m_source{std::move(source)} {}

Archive::~Archive() = default;

Expected<std::shared_ptr<const Archive>, ErrorCode2> Archive::open(ByteSourcePtr source, FaultLog* faults)
{
    const std::shared_ptr<Archive> archive{new Archive{std::move(source)}};
    if (auto done = archive->readDirectory(faults); !done)
        return done.error();
    return std::shared_ptr<const Archive>{archive};
}

Expected<void, ErrorCode2> Archive::readDirectory(FaultLog* faults)
{
    SourceTail tail{*m_source};
    auto place = readEndRecord(tail);
    if (!place)
        return place.error();
    m_comment = place->comment;
    m_bytesBehind = place->behind;
    m_directory.resize(place->directorySize);
    if (auto done = tail.readAt(place->directoryOffset, m_directory); !done)
        return done;
    auto entries = DirectoryReader{displayName(), *place, m_directory, faults}.read();
    if (!entries)
        return entries.error();
    m_entries = *std::move(entries);
    return {};
}

std::uint64_t Archive::bytesBefore() const noexcept
{
    const auto first = std::ranges::min_element(m_entries, {}, &Entry::headerOffset);
    return first == m_entries.end() ? 0 : first->headerOffset;
}

std::string Archive::describe(std::size_t index) const
{
    return describeEntry(displayName(), m_entries.at(index));
}

Expected<Archive::Local, ErrorCode2> Archive::readLocal(const Entry& entry, const ByteSource& source) const
{
    const auto failure = [&](std::string_view reason) {
        return Errors::makeError(OpcError::damagedArchive, describeEntry(displayName(), entry), reason);
    };
    const std::uint64_t room = entry.regionEnd - entry.headerOffset;
    std::vector<std::byte> buffer;
    const std::uint64_t usualSize = RecordSize::localHeader + entry.name.size() + usualExtra;
    auto header = stretchOf(source, entry.headerOffset, std::min(room, usualSize), buffer);
    if (!header)
        return header.error();
    if (u32(*header, 0) != Signature::localHeader)
        return failure("there is no local header where the directory says (ZIP application note 4.3.7)");
    const std::size_t headerSize = LocalHeader::sizeOf(*header);
    if (headerSize > room || entry.compressedSize > room - headerSize)
        return failure("it overlaps what follows (ZIP application note 4.3.7)");
    if (headerSize > header->size())
        header = stretchOf(source, entry.headerOffset, headerSize, buffer);
    if (!header)
        return header.error();
    const LocalHeader local{entry, header->first(headerSize)};
    if (const char* difference = local.difference())
        return failure(difference);
    Local result{.dataOffset = entry.headerOffset + headerSize};
    result.end = result.dataOffset + entry.compressedSize;
    if ((entry.flags & Flag::dataDescriptor) == 0)
        return result;
    std::vector<std::byte> descriptorBuffer;
    const auto behind =
        stretchOf(source, result.end, std::min(longestDescriptor, entry.regionEnd - result.end), descriptorBuffer);
    if (!behind)
        return behind.error();
    const auto descriptor = local.descriptorSize(*behind);
    if (!descriptor)
        return failure("the data descriptor and the directory differ, ISO/IEC 29500-2 M3.14");
    result.end += *descriptor;
    return result;
}

Expected<void, ErrorCode2> Archive::verify(std::size_t index) const
{
    m_locals.resize(m_entries.size());
    Local& known = m_locals.at(index);
    if (known.dataOffset != 0)
        return {};
    const auto local = readLocal(m_entries[index], *m_source);
    if (!local)
        return local.error();
    known = *local;
    return {};
}

PackedData Archive::packedData(std::size_t index, std::uint64_t offset) const
{
    const Entry& entry = m_entries[index];
    return {.source = *m_source,
            .offset = offset,
            .compressedSize = entry.compressedSize,
            .size = entry.size,
            .crc = entry.crc,
            .method = entry.method,
            .subject = [this, index] { return describe(index); }};
}

bool Archive::isReadWhole(std::size_t index) const
{
    const Entry& entry = m_entries.at(index);
    return entry.regionEnd - entry.headerOffset <= wholeRegion;
}

Expected<PackedEntry, ErrorCode2> Archive::readPacked(std::size_t index, std::vector<std::byte>& buffer) const
{
    const Entry& entry = m_entries[index];
    const auto region = stretchOf(*m_source, entry.headerOffset, entry.regionEnd - entry.headerOffset, buffer);
    if (!region)
        return region.error();
    const auto local = readLocal(entry, RegionSource{entry.headerOffset, *region});
    if (!local)
        return local.error();
    m_locals.resize(m_entries.size());
    m_locals[index] = *local;
    return PackedEntry{.bytes = region->subspan(local->dataOffset - entry.headerOffset, entry.compressedSize),
                       .size = entry.size,
                       .crc = entry.crc,
                       .method = entry.method};
}

Expected<std::vector<std::byte>, ErrorCode2> Archive::unpack(std::size_t index, const PackedEntry& packed) const
{
    // the bytes are here, so that their place does not count; what `verify` found out is the owner's thread's
    return unpackBytes(packedData(index, 0), packed.bytes);
}

Expected<ByteSourcePtr, ErrorCode2> Archive::readSmallPackage(std::size_t index) const
{
    std::vector<std::byte> buffer;
    const auto packed = readPacked(index, buffer);
    if (!packed)
        return packed.error();
    const std::uint64_t size = packed->bytes.size();
    if (buffer.empty())
        return windowSource(m_source, m_locals[index].dataOffset, size, describe(index));
    buffer.erase(buffer.begin(), buffer.begin() + (packed->bytes.data() - buffer.data()));
    buffer.resize(size);
    return memorySource(std::move(buffer), describe(index));
}

Expected<std::vector<std::byte>, ErrorCode2> Archive::read(std::size_t index) const
{
    if (isReadWhole(index)) {
        std::vector<std::byte> buffer;
        const auto packed = readPacked(index, buffer);
        if (!packed)
            return packed.error();
        return unpack(index, *packed);
    }
    if (auto verified = verify(index); !verified)
        return verified.error();
    return Zip::readPacked(packedData(index, m_locals[index].dataOffset));
}

Expected<void, ErrorCode2> Archive::stream(std::size_t index, const Disk::ByteSink& sink) const
{
    if (isReadWhole(index) && m_entries[index].size <= wholeRegion) {
        const auto bytes = read(index);
        if (!bytes)
            return bytes.error();
        return bytes->empty() ? Expected<void, ErrorCode2>{} : sink(*bytes);
    }
    if (auto verified = verify(index); !verified)
        return verified;
    return streamPacked(packedData(index, m_locals[index].dataOffset), sink);
}

Expected<ByteSourcePtr, ErrorCode2> Archive::openNested(std::size_t index) const
{
    if (m_entries.at(index).method != Method::stored) {
        auto bytes = read(index);
        if (!bytes)
            return bytes.error();
        return memorySource(*std::move(bytes), describe(index));
    }
    if (m_entries[index].regionEnd - m_entries[index].headerOffset <= smallPackage)
        return readSmallPackage(index);
    if (auto verified = verify(index); !verified)
        return verified.error();
    return windowSource(m_source, m_locals[index].dataOffset, m_entries[index].size, describe(index));
}

Expected<void, ErrorCode2> Archive::copyLocalEntry(std::size_t index, Disk::ReplacementFile& file) const
{
    if (auto verified = verify(index); !verified)
        return verified;
    const std::uint64_t begin = m_entries[index].headerOffset;
    return m_source->copyTo(file, begin, m_locals[index].end - begin);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
