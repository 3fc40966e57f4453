#include "host/core/opc/package_data.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/limits.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

PackageData::PackageData() = default;

PackageData::PackageData(std::string displayName, PackageItems items, int depth, FaultLog* faults)
    : m_parts{std::move(displayName), std::move(items), faults}, m_depth{depth}
{
}

PackagePtr PackageData::create()
{
    return PackagePtr{new PackageData};
}

Result<PackagePtr> PackageData::openFile(const FilePath2& path, FaultLog* faults)
{
    auto source = Zip::openFileSource(path);
    if (!source)
        return source.error();
    return openSource(*source, 0, faults);
}

Result<PackagePtr> PackageData::openSource(const Zip::ByteSourcePtr& source, int depth, FaultLog* faults,
                                           SiblingReadingsPtr siblings)
{
    const std::string& name = source->displayName();
    if (depth >= Limits::packageDepth)
        return Errors::makeError(OpcError::limitExceeded, name, "packages lie too deep in packages");
    auto archive = Zip::Archive::open(source, faults);
    if (!archive)
        return archive.error();
    if (!hasContentTypes(**archive))
        return Errors::makeError(OpcError::noContentTypes, name, "ISO/IEC 29500-2 M3.10");
    // a check tells of all faults of each package
    if (faults != nullptr)
        siblings = nullptr;
    return PackagePtr{
        new PackageData{name, PackageItems{source, std::move(*archive), std::move(siblings)}, depth, faults}};
}

Result<PartPtr> PackageData::findPart(std::string_view name)
{
    if (const std::string fault = Markup::partNameFault(name); !fault.empty())
        return Errors::makeError(OpcError::invalidPartName, Text::displayed(name), fault);
    auto part = m_parts.find(name);
    if (part && (*part)->holdsRelationships())
        return Errors::makeError(OpcError::noSuchPart, m_parts.subjectOf(name), "it holds relationships");
    return part;
}

Result<PartPtr> PackageData::findTarget(std::string_view source, const Markup::Relationship& relationship)
{
    return findTarget(source, relationship.target, relationship.mode,
                      [&] { return relationshipSubject(displayName(), relationship.id, source); });
}

Result<PartPtr> PackageData::findTarget(const RelationshipRecord& relationship)
{
    return findTarget(relationship.source, relationship.target, relationship.mode,
                      [&] { return relationship.subject(); });
}

template <class Subject>
Result<PartPtr> PackageData::findTarget(std::string_view source, std::string_view target, OpcTargetMode mode,
                                        const Subject& subject)
{
    if (mode == OpcTargetMode::external)
        return Errors::makeError(OpcError::targetIsExternal, subject(), Text::displayed(target));
    const Markup::ResolvedTarget resolved = Markup::resolveTarget(source, target);
    if (!resolved.isPartName())
        return Errors::makeError(OpcError::noSuchPart, subject(), resolved.fault);
    return findPart(resolved.partName);
}

Result<PartPtr> PackageData::createPart(std::string_view name, std::string_view mediaType, Zip::PayloadPtr bytes,
                                        PackageParts::Typing typing)
{
    if (Markup::isRelationshipsPartName(name))
        return Errors::makeError(OpcError::invalidPartName, Text::displayed(name),
                                 "names of this form belong to relationships (M1.30)");
    auto part = m_parts.create(name, mediaType, typing);
    if (part)
        setBytes(*part, std::move(bytes));
    return part;
}

Result<PackagePtr> PackageData::openNested(const PartRecord& part)
{
    auto source = m_parts.openNested(part);
    if (!source)
        return source.error();
    return openSource(*source, m_depth + 1, m_parts.faults(), nestedReadings());
}

const SiblingReadingsPtr& PackageData::nestedReadings()
{
    if (m_nestedReadings == nullptr)
        m_nestedReadings = std::make_shared<SiblingReadings>();
    return m_nestedReadings;
}

Result<> PackageData::write(const FilePath2& path) const
{
    PackageItems::Generated generated;
    m_parts.generateContentTypes(generated);
    m_relationships.generate(generated);
    m_core.generate(generated);
    return m_parts.items().write(path, generated);
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
