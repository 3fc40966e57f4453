#include "host/core/opc/package_inspection.h"

#include "host/core/opc/package_access.h"
#include "host/core/opc/package_verifier.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging {

using detail::PackageData;
using detail::PartPtr;
using detail::Result;

namespace {

std::vector<InspectedEntry> describedEntries(const Zip::Archive& archive)
{
    std::vector<InspectedEntry> entries;
    entries.reserve(archive.entries().size());
    for (const Zip::Entry& entry : archive.entries())
        entries.push_back(
            {std::string{entry.name}, {}, {}, entry.size, entry.compressedSize, entry.method == Zip::Method::deflated});
    return entries;
}

Result<std::vector<InspectedEntry>> entriesOf(PackageData& package)
{
    auto parts = package.parts().all();
    if (!parts)
        return parts.error();
    const Zip::Archive* const archive = package.parts().items().archive();
    if (archive == nullptr)
        return std::vector<InspectedEntry>{};
    std::vector<InspectedEntry> entries = describedEntries(*archive);
    for (const PartPtr& part : **parts) {
        for (const std::uint32_t index : part->entries()) {
            entries[index].partName = part->name;
            entries[index].mediaType = std::string_view{part->mediaType};
        }
    }
    return entries;
}

Result<std::vector<std::string>> sourcesOf(PackageData& package)
{
    auto parts = package.parts().all();
    if (!parts)
        return parts.error();
    std::vector<std::string> sources;
    for (const PartPtr& part : **parts) {
        if (auto source = Markup::sourceOfRelationshipsPart(part->name))
            sources.push_back(std::move(*source));
    }
    return sources;
}

InspectedRelationship described(const detail::RelationshipRecord& record)
{
    InspectedRelationship relationship{
        std::string{Text::narrow(record.id)}, std::string{Text::narrow(record.type)}, record.target, {}, record.mode};
    if (record.mode == OpcTargetMode::internal)
        relationship.partName = record.resolved().partName;
    return relationship;
}

} // namespace

Expected<PackageInspection, ErrorCode2> PackageInspection::open(const FilePath2& path)
{
    return Text::withinMemory([&]() -> Result<PackageInspection> {
        auto data = PackageData::openFile(path);
        if (!data)
            return data.error();
        return PackageInspection{std::move(*data)};
    });
}

PackageInspection::PackageInspection(const OpcPackage& package) noexcept : m_data{detail::PackageAccess::data(package)}
{
}

PackageInspection::PackageInspection(std::shared_ptr<PackageData> data) noexcept : m_data{std::move(data)} {}

PackageInspection::PackageInspection(const PackageInspection&) = default;
PackageInspection::PackageInspection(PackageInspection&&) noexcept = default;
PackageInspection& PackageInspection::operator=(const PackageInspection&) = default;
PackageInspection& PackageInspection::operator=(PackageInspection&&) noexcept = default;
PackageInspection::~PackageInspection() = default;

Expected<std::vector<InspectedEntry>, ErrorCode2> PackageInspection::entries() const
{
    return Text::withinMemory([this] { return entriesOf(*m_data); });
}

Expected<std::vector<std::string>, ErrorCode2> PackageInspection::sources() const
{
    return Text::withinMemory([this] { return sourcesOf(*m_data); });
}

Expected<std::vector<InspectedRelationship>, ErrorCode2> PackageInspection::relationships(std::string_view source) const
{
    return Text::withinMemory([&]() -> Result<std::vector<InspectedRelationship>> {
        auto records = m_data->relationships().records(source);
        if (!records)
            return records.error();
        std::vector<InspectedRelationship> relationships;
        for (const detail::RelationshipPtr& record : *records)
            relationships.push_back(described(*record));
        return relationships;
    });
}

Expected<ByteArray2, ErrorCode2> PackageInspection::read(std::string_view partName) const
{
    return Text::withinMemory([&]() -> Result<ByteArray2> {
        auto part = m_data->parts().find(partName);
        if (!part)
            return part.error();
        auto bytes = m_data->parts().read(**part);
        if (!bytes)
            return bytes.error();
        return ByteArray2{std::move(*bytes)};
    });
}

Expected<std::vector<std::string>, ErrorCode2> PackageInspection::verify() const
{
    return Text::withinMemory([this] { return detail::PackageVerifier{*m_data}.verify(); });
}

} // namespace Kelvaris::System::IO::OpcPackaging
