#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/package_access.h"
#include "host/core/opc/package_verifier.h"
#include "host/core/text/memory_guard.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging {

using detail::PackageAccess;
using detail::PackageData;

namespace {

Expected<OpcPackagePart, ErrorCode2> handleOf(const detail::PackagePtr& package,
                                              const Expected<detail::PartPtr, ErrorCode2>& part)
{
    if (!part)
        return part.error();
    return PackageAccess::part(package, *part);
}

Expected<OpcPackageRelationshipCollection, ErrorCode2>
collectionOf(const Expected<std::vector<detail::RelationshipPtr>, ErrorCode2>& records)
{
    if (!records)
        return records.error();
    return PackageAccess::relationships(*records);
}

} // namespace

Expected<OpcPackage, ErrorCode2> OpcPackage::open(const FilePath2& path, OpcPackageOpenFlag flag)
{
    return Text::withinMemory([&]() -> Expected<OpcPackage, ErrorCode2> {
        auto data = PackageData::openFile(path);
        if (!data)
            return data.error();
        if (flag == OpcPackageOpenFlag::verify) {
            if (auto verified = detail::PackageVerifier{**data}.verify(); !verified)
                return verified.error();
        }
        return OpcPackage{std::move(*data)};
    });
}

Expected<OpcPackage, ErrorCode2> open_package(const FilePath2& path)
{
    return OpcPackage::open(path, OpcPackageOpenFlag::readOnDemand);
}

OpcPackage::OpcPackage(std::shared_ptr<PackageData> data) noexcept : m_data{std::move(data)} {}

OpcPackage::OpcPackage(OpcPackage&&) noexcept = default;
OpcPackage& OpcPackage::operator=(OpcPackage&&) noexcept = default;
OpcPackage::~OpcPackage() = default;

Expected<OpcPackagePartCollection, ErrorCode2> OpcPackage::parts() const
{
    return Text::withinMemory([this]() -> Expected<OpcPackagePartCollection, ErrorCode2> {
        auto parts = m_data->parts().all();
        if (!parts)
            return parts.error();
        return PackageAccess::parts(m_data, **parts);
    });
}

Expected<OpcPackageRelationshipCollection, ErrorCode2> OpcPackage::relationships() const
{
    return Text::withinMemory([this] { return collectionOf(m_data->relationships().records(Markup::packageSource)); });
}

Expected<OpcPackageRelationshipCollection, ErrorCode2> OpcPackage::relationshipsByType(const String2& type) const
{
    return Text::withinMemory(
        [&] { return collectionOf(m_data->relationships().recordsByType(Markup::packageSource, Text::narrow(type))); });
}

Expected<OpcPackagePart, ErrorCode2> OpcPackage::part(const OpcPackagePartUri& uri) const
{
    return Text::withinMemory([&]() -> Expected<OpcPackagePart, ErrorCode2> {
        auto name = uri.toString();
        if (!name)
            return name.error();
        return handleOf(m_data, m_data->findPart(Text::narrow(*name)));
    });
}

Expected<OpcPackagePart, ErrorCode2> OpcPackage::partFromRelationship(const OpcPackageRelationship& relationship) const
{
    return Text::withinMemory(
        [&] { return handleOf(m_data, m_data->findTarget(PackageAccess::record(relationship))); });
}

Expected<OpcPackagePart, ErrorCode2> OpcPackage::createPart(const OpcPackagePartUri& uri, const MIMEType& type,
                                                            OpcPackageCompressionType compression)
{
    return Text::withinMemory([&]() -> Expected<OpcPackagePart, ErrorCode2> {
        auto name = uri.toString();
        if (!name)
            return name.error();
        auto nothing = m_data->parts().items().take({}, compression);
        if (!nothing)
            return nothing.error();
        auto part = m_data->createPart(Text::narrow(*name), Text::narrow(type.text()), std::move(*nothing));
        if (part)
            (*part)->compression = compression;
        return handleOf(m_data, part);
    });
}

Expected<OpcPackageRelationship, ErrorCode2> OpcPackage::createRelationship(const OpcPackageUri& target,
                                                                            OpcTargetMode mode, const String2& type)
{
    return Text::withinMemory([&]() -> Expected<OpcPackageRelationship, ErrorCode2> {
        auto text = target.toString();
        if (!text)
            return text.error();
        auto& relationships = m_data->relationships();
        auto added = relationships.add(Markup::packageSource, Text::narrow(type), Text::narrow(*text), mode);
        if (!added)
            return added.error();
        return PackageAccess::relationship(relationships.record(Markup::packageSource, **added));
    });
}

OpcPackageProperties& OpcPackage::packageProperties()
{
    return m_data->properties();
}

} // namespace Kelvaris::System::IO::OpcPackaging
