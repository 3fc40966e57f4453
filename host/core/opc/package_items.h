#pragma once

#include "host/core/opc/copy_on_write.h"
#include "host/core/opc/result.h"
#include "host/core/opc/sibling_readings.h"
#include "host/core/opc/zip/archive.h"
#include "host/core/opc/zip/payload_store.h"
#include "host/core/opc/zip/unpacking_job.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_enums.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// One item of a package's file: an entry, the pieces of an interleaved part, or bytes that were set since.
struct PackageItem
{
    static constexpr std::uint32_t noEntry = std::numeric_limits<std::uint32_t>::max();

    std::string_view itemName;         ///< as entries are named, without the suffix of pieces; a view of the archive or
                                       ///< of the new part
    std::uint32_t entry = noEntry;     ///< of the archive that was opened
    std::vector<std::uint32_t> pieces; ///< instead of the one entry, in their order
    Zip::PayloadPtr payload;           ///< what stands in the place of the entries
    bool isRemoved = false;

    /// None for a new item.
    std::span<const std::uint32_t> entries() const noexcept
    {
        return entry == noEntry ? std::span{pieces} : std::span{&entry, 1};
    }

    bool hasBytes() const noexcept { return payload != nullptr || !entries().empty(); }
};

using ItemPtr = std::shared_ptr<PackageItem>;

/// The file of a package: what was opened, and what changed since.
///
/// Saving copies every entry that is not of a changed item as it stands, parts or not.
class PackageItems
{
public:
    /// Documents that are made when the package is saved.
    using Generated = std::unordered_map<const PackageItem*, std::string>;

    /// Of a new package.
    PackageItems() = default;

    /// @param source    what `archive` was opened from
    /// @param siblings  of the packages beside this one; null when there are none
    PackageItems(Zip::ByteSourcePtr source, Zip::ArchivePtr archive, SiblingReadingsPtr siblings) noexcept;

    /// @return  null for a new package
    const Zip::Archive* archive() const noexcept { return m_archive.get(); }

    /// Puts a new item behind all others. It gets its bytes with `setPayload`, or when the package is saved.
    void add(const ItemPtr& item) { m_added.push_back(item); }

    /// From now on the item is written from `payload`, in its place.
    void setPayload(const ItemPtr& item, Zip::PayloadPtr payload);

    /// The item with its entries is not written any more.
    void remove(const ItemPtr& item);

    Result<Zip::PayloadPtr> take(std::span<const std::byte> bytes, OpcPackageCompressionType compression);

    /// @return  as `Disk::InputFile::open` and `Zip::PayloadStore::take`
    Result<Zip::PayloadPtr> takeFile(const FilePath2& path, OpcPackageCompressionType compression);

    /// @param subject  what is read, for messages
    Result<std::vector<std::byte>> read(const PackageItem& item, std::string_view subject) const;
    Result<> stream(const PackageItem& item, std::string_view subject, const Disk::ByteSink& sink) const;
    Result<Zip::ByteSourcePtr> openNested(const PackageItem& item, std::string_view subject) const;

    /// Reads the item so far that another thread can do the rest.
    /// @return  null when that is not worth it: `stream` does it then
    Result<Zip::UnpackingJobPtr> readAhead(const PackageItem& item) const;

    /// What `parse` makes of an item's bytes, or has made of the same bytes for a package beside this one.
    ///
    /// @param subject  a callable that returns what is read, for messages
    /// @param parse    takes the bytes and that text, returns a `Result<Document>`; the subject must be in its errors
    ///                 alone
    template <class Document, class Subject, class Parse>
    Result<CopyOnWrite<Document>> readAs(const PackageItem& item, const Subject& subject, const Parse& parse) const;

    /// Saves everything. No thread runs afterwards.
    /// @return  the error of reading or writing; the file is as it was then
    Result<> write(const FilePath2& path, const Generated& generated) const;

private:
    bool isSharable(const PackageItem& item) const;
    Zip::PayloadStore& store();
    Result<> writeItems(const FilePath2& path, const Generated& generated) const;
    Result<std::vector<std::byte>> readPieces(const PackageItem& item, std::string_view subject) const;

    Zip::ByteSourcePtr m_source;
    Zip::ArchivePtr m_archive;
    SiblingReadingsPtr m_siblings;
    std::vector<ItemPtr> m_changed; ///< in the order of the first change
    std::vector<ItemPtr> m_added;
    std::unique_ptr<Zip::PayloadStore> m_store;
};

template <class Document, class Subject, class Parse>
Result<CopyOnWrite<Document>> PackageItems::readAs(const PackageItem& item, const Subject& subject,
                                                   const Parse& parse) const
{
    std::vector<std::byte> buffer;
    std::optional<Zip::PackedEntry> packed;
    if (isSharable(item)) {
        auto read = m_archive->readPacked(item.entry, buffer);
        if (!read)
            return read.error();
        if (auto known = m_siblings->find<Document>(item.itemName, *read))
            return CopyOnWrite<Document>{std::move(known)};
        packed = *read;
    }
    const std::string name = subject();
    const auto bytes = packed ? m_archive->unpack(item.entry, *packed) : read(item, name);
    if (!bytes)
        return bytes.error();
    auto document = parse(*bytes, name);
    if (!document)
        return document.error();
    auto made = std::make_shared<Document>(std::move(*document));
    if (packed)
        m_siblings->keep(item.itemName, *packed, made);
    return CopyOnWrite<Document>{std::move(made)};
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
