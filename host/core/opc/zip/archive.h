#pragma once

#include "host/core/opc/fault_log.h"
#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/entry.h"
#include "host/core/paths/disk/byte_sink.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

struct PackedData;

/// A ZIP archive, read strictly (APPNOTE 6.3, as far as ISO/IEC 29500-2 Annex C allows it): what readers could
/// understand in two ways is refused.
///
/// Opening reads the end record and the directory. The local header of an entry is compared with the directory when
/// the entry is first used (M3.14), its bytes with their checksum whenever they are read in full. Names are bytes here:
/// equal ones are allowed, and what they mean is the package layer's matter.
///
/// Not for use by several threads at once, but for `unpack`.
class KELVARIS_CORE_API Archive
{
public:
    /// @return  opc 6: no end record, or none that fits
    ///          opc 7: directory, sizes or offsets outside the file, entries that overlap
    ///          opc 8: an entry's method, several disks, a version above 4.5, patched data
    ///          opc 9: an encrypted entry
    ///          opc 23: too many entries
    ///          or the error of reading
    /// @param faults  where the faults of single entries go, which are left out then
    static Expected<std::shared_ptr<const Archive>, ErrorCode2> open(ByteSourcePtr source, FaultLog* faults = nullptr);

    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    ~Archive();

    /// In the order of the directory. Names and records are valid as long as the archive.
    std::span<const Entry> entries() const noexcept { return m_entries; }

    /// Behind the end record; bytes, of no known encoding.
    std::string_view comment() const noexcept { return m_comment; }

    /// Bytes of the file before the first entry and behind the archive, which belong to nothing.
    std::uint64_t bytesBefore() const noexcept;
    std::uint64_t bytesBehind() const noexcept { return m_bytesBehind; }

    const std::string& displayName() const noexcept { return m_source->displayName(); }

    /// Compares the entry's local header and data descriptor with the directory; once for each entry.
    /// @return  opc 7 with the rule, or the error of reading
    Expected<void, ErrorCode2> verify(std::size_t index) const;

    /// The entry's bytes, checked against size and checksum.
    /// @return  as `verify`; opc 10 and 11 when the bytes are damaged; opc 23 when they are more than the limits allow
    Expected<std::vector<std::byte>, ErrorCode2> read(std::size_t index) const;

    /// Whether `readPacked` may be asked for the entry: whether it is so small that it is read in one piece anyway.
    bool isReadWhole(std::size_t index) const;

    /// The first half of `read`: the entry's bytes as they stand.
    /// @param buffer  where they are put unless the source is in memory; the result is a view of either
    /// @return  as `verify`
    Expected<PackedEntry, ErrorCode2> readPacked(std::size_t index, std::vector<std::byte>& buffer) const;

    /// The second half, which any thread may do.
    /// @param packed  of `readPacked`, for the same entry
    Expected<std::vector<std::byte>, ErrorCode2> unpack(std::size_t index, const PackedEntry& packed) const;

    /// The same as `read` for entries of any size, in bounded memory. `sink` has seen bytes when the checksum turns out
    /// wrong.
    Expected<void, ErrorCode2> stream(std::size_t index, const Disk::ByteSink& sink) const;

    /// The entry's bytes as the source of another archive: a window when they are stored, a copy in memory when they
    /// are compressed or few. The checksum of stored ones is not looked at.
    /// @return  as `read`
    Expected<ByteSourcePtr, ErrorCode2> openNested(std::size_t index) const;

    /// Appends the entry's local header, data and descriptor as they stand; for `ArchiveWriter`.
    Expected<void, ErrorCode2> copyLocalEntry(std::size_t index, Disk::ReplacementFile& file) const;

    /// "archive: entry", for messages.
    std::string describe(std::size_t index) const;

private:
    /// What `verify` has found out about an entry; all 0 before.
    struct Local
    {
        std::uint64_t dataOffset = 0;
        std::uint64_t end = 0; ///< behind data and descriptor
    };

    explicit Archive(ByteSourcePtr source) noexcept;

    Expected<void, ErrorCode2> readDirectory(FaultLog* faults);
    Expected<Local, ErrorCode2> readLocal(const Entry& entry, const ByteSource& source) const;
    Expected<ByteSourcePtr, ErrorCode2> readSmallPackage(std::size_t index) const;
    PackedData packedData(std::size_t index, std::uint64_t offset) const;

    ByteSourcePtr m_source;
    std::vector<std::byte> m_directory;
    std::vector<Entry> m_entries;
    std::string m_comment;
    std::uint64_t m_bytesBehind = 0;
    mutable std::vector<Local> m_locals; ///< empty until the first entry is used
};

using ArchivePtr = std::shared_ptr<const Archive>;

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
