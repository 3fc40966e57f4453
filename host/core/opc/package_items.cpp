#include "host/core/opc/package_items.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/items_writer.h"
#include "host/core/opc/limits.h"
#include "host/core/opc/zip/workers.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

/// What is larger is inflated in pieces.
constexpr std::uint64_t mostAhead = std::uint64_t{1} << 20;

Zip::Effort effortOf(OpcPackageCompressionType compression)
{
    switch (compression) {
    case OpcPackageCompressionType::none:
        return Zip::Effort::store;
    case OpcPackageCompressionType::maximum:
        return Zip::Effort::maximum;
    case OpcPackageCompressionType::fast:
        return Zip::Effort::fast;
    case OpcPackageCompressionType::normal:
        break;
    }
    return Zip::Effort::normal;
}

} // namespace

PackageItems::PackageItems(Zip::ByteSourcePtr source, Zip::ArchivePtr archive, SiblingReadingsPtr siblings) noexcept
    : m_source{std::move(source)}, m_archive{std::move(archive)}, m_siblings{std::move(siblings)}
{
}

void PackageItems::setPayload(const ItemPtr& item, Zip::PayloadPtr payload)
{
    if (!item->entries().empty() && item->payload == nullptr)
        m_changed.push_back(item);
    item->payload = std::move(payload);
}

void PackageItems::remove(const ItemPtr& item)
{
    if (item->entries().empty())
        std::erase(m_added, item);
    else if (item->payload == nullptr)
        m_changed.push_back(item);
    item->isRemoved = true;
}

Result<Zip::PayloadPtr> PackageItems::take(std::span<const std::byte> bytes, OpcPackageCompressionType compression)
{
    return store().take(bytes, effortOf(compression));
}

Result<Zip::PayloadPtr> PackageItems::takeFile(const FilePath2& path, OpcPackageCompressionType compression)
{
    auto file = Disk::InputFile::open(path);
    if (!file)
        return file.error();
    return store().take(*file, effortOf(compression));
}

Result<std::vector<std::byte>> PackageItems::read(const PackageItem& item, std::string_view subject) const
{
    if (item.payload != nullptr)
        return item.payload->read(subject);
    if (item.entry != PackageItem::noEntry)
        return m_archive->read(item.entry);
    return readPieces(item, subject);
}

/// What was put in the place of an entry, and what lies in pieces, is read for this package alone.
bool PackageItems::isSharable(const PackageItem& item) const
{
    return m_siblings != nullptr && item.payload == nullptr && item.entry != PackageItem::noEntry &&
           m_archive->isReadWhole(item.entry);
}

Result<std::vector<std::byte>> PackageItems::readPieces(const PackageItem& item, std::string_view subject) const
{
    std::vector<std::byte> bytes;
    const Disk::ByteSink append = [&](std::span<const std::byte> piece) -> Result<> {
        if (piece.size() > Limits::partInMemory - bytes.size())
            return Errors::makeError(OpcError::limitExceeded, subject, "the part is too large for memory");
        bytes.insert(bytes.end(), piece.begin(), piece.end());
        return {};
    };
    auto streamed = stream(item, subject, append);
    if (!streamed)
        return streamed.error();
    return bytes;
}

Result<> PackageItems::stream(const PackageItem& item, std::string_view subject, const Disk::ByteSink& sink) const
{
    if (item.payload != nullptr)
        return item.payload->stream(subject, sink);
    for (const std::uint32_t entry : item.entries()) {
        if (auto streamed = m_archive->stream(entry, sink); !streamed)
            return streamed;
    }
    return {};
}

Result<Zip::UnpackingJobPtr> PackageItems::readAhead(const PackageItem& item) const
{
    if (item.payload != nullptr || item.entry == PackageItem::noEntry || !m_archive->isReadWhole(item.entry))
        return Zip::UnpackingJobPtr{};
    const Zip::Entry& entry = m_archive->entries()[item.entry];
    if (entry.method == Zip::Method::stored || entry.size < Zip::Workers::worthHandingOver || entry.size > mostAhead)
        return Zip::UnpackingJobPtr{};
    std::vector<std::byte> buffer;
    const auto packed = m_archive->readPacked(item.entry, buffer);
    if (!packed)
        return packed.error();
    return std::make_shared<Zip::UnpackingJob>(*m_archive, item.entry, *packed, std::move(buffer));
}

Result<Zip::ByteSourcePtr> PackageItems::openNested(const PackageItem& item, std::string_view subject) const
{
    if (item.payload != nullptr)
        return item.payload->openNested(std::string{subject});
    if (item.entry != PackageItem::noEntry)
        return m_archive->openNested(item.entry);
    auto bytes = readPieces(item, subject);
    if (!bytes)
        return bytes.error();
    return Zip::memorySource(std::move(*bytes), std::string{subject});
}

Result<> PackageItems::write(const FilePath2& path, const Generated& generated) const
{
    if (m_store != nullptr)
        m_store->packAll();
    auto written = writeItems(path, generated);
    if (m_store != nullptr)
        m_store->rest();
    return written;
}

Result<> PackageItems::writeItems(const FilePath2& path, const Generated& generated) const
{
    auto file = Disk::ReplacementFile::create(path);
    if (!file)
        return file.error();
    ItemsWriter writer{*file, generated};
    Result<> written = writer.packGenerated();
    if (written && m_archive != nullptr)
        written = writer.writeEntries(*m_archive, *m_source, m_changed);
    if (written)
        written = writer.writeNew(m_added);
    if (written)
        written = writer.finish(m_archive == nullptr ? std::string_view{} : m_archive->comment());
    if (!written)
        return written;
    return file->commit();
}

Zip::PayloadStore& PackageItems::store()
{
    if (m_store == nullptr)
        m_store = std::make_unique<Zip::PayloadStore>();
    return *m_store;
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
