#include "host/core/opc/package_relationships.h"

#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

std::string RelationshipRecord::subject() const
{
    return relationshipSubject(packageName == nullptr ? std::string_view{} : *packageName, Text::narrow(id), source);
}

std::string relationshipSubject(std::string_view packageName, std::string_view id, std::string_view source)
{
    std::string subject{packageName};
    if (!subject.empty())
        subject += ": ";
    return subject.append("relationship ").append(Text::displayed(id)).append(" of ").append(source);
}

Result<const Markup::Relationships*> PackageRelationships::of(std::string_view source)
{
    auto set = setOf(source);
    if (!set)
        return set.error();
    return &*(*set)->document;
}

Result<std::vector<RelationshipPtr>> PackageRelationships::records(std::string_view source)
{
    auto document = of(source);
    if (!document)
        return document.error();
    std::vector<RelationshipPtr> records;
    records.reserve((*document)->all().size());
    for (const Markup::Relationship& relationship : (*document)->all())
        records.push_back(record(source, relationship));
    return records;
}

Result<std::vector<const Markup::Relationship*>> PackageRelationships::ofType(std::string_view source,
                                                                              std::string_view type)
{
    auto document = of(source);
    if (!document)
        return document.error();
    std::vector<const Markup::Relationship*> found;
    for (const Markup::Relationship& relationship : (*document)->all()) {
        if (relationship.type == type)
            found.push_back(&relationship);
    }
    return found;
}

Result<std::vector<RelationshipPtr>> PackageRelationships::recordsByType(std::string_view source, std::string_view type)
{
    auto found = ofType(source, type);
    if (!found)
        return found.error();
    std::vector<RelationshipPtr> records;
    records.reserve(found->size());
    for (const Markup::Relationship* relationship : *found)
        records.push_back(record(source, *relationship));
    return records;
}

Result<const Markup::Relationship*> PackageRelationships::add(std::string_view source, std::string_view type,
                                                              std::string_view target, OpcTargetMode mode)
{
    auto set = setOf(source);
    if (!set)
        return set.error();
    const bool isFirst = (*set)->part == nullptr;
    Errors::Rollback takeBack{[&] {
        if (isFirst && (*set)->part != nullptr)
            m_parts.remove(std::exchange((*set)->part, nullptr));
    }};
    if (isFirst) {
        auto part = m_parts.create(Markup::relationshipsPartNameOf(source), Markup::relationshipsMediaType,
                                   PackageParts::Typing::byExtension);
        if (!part)
            return part.error();
        (*set)->part = *part;
    }
    auto added = (*set)->document.toChange().add(source, type, target, mode);
    if (added)
        takeBack.dismiss();
    return added;
}

Result<> PackageRelationships::remove(std::string_view source, std::string_view id)
{
    auto set = setOf(source);
    if (!set)
        return set.error();
    (*set)->document.toChange().remove(id);
    return {};
}

Result<> PackageRelationships::replaceByType(std::string_view source, std::string_view type, std::string_view target)
{
    const auto present = ofType(source, type);
    if (!present)
        return present.error();
    // nothing is rewritten that says so already
    if (present->size() == 1 && present->front()->target == target && present->front()->mode == OpcTargetMode::internal)
        return {};
    std::vector<std::string> old;
    for (const Markup::Relationship* relationship : *present)
        old.push_back(relationship->id);
    const auto added = add(source, type, target, OpcTargetMode::internal);
    if (!added)
        return added.error();
    const std::string id = (*added)->id;
    Errors::Rollback takeBack{[&] { (void)remove(source, id); }};
    for (const std::string& each : old) {
        if (auto removed = remove(source, each); !removed)
            return removed.error();
    }
    takeBack.dismiss();
    return {};
}

void PackageRelationships::generate(PackageItems::Generated& generated) const
{
    for (const auto& [source, set] : m_sets) {
        if (set.part == nullptr || (set.part->hasBytes() && !set.document->isChanged()))
            continue;
        generated[set.part.get()] = set.document->serialised();
    }
}

Result<PackageRelationships::Set*> PackageRelationships::setOf(std::string_view source)
{
    const std::string key = Markup::partNameKey(source);
    if (const auto known = m_sets.find(key); known != m_sets.end())
        return &known->second;
    auto set = read(source);
    if (!set)
        return set.error();
    return &m_sets.emplace(key, std::move(*set)).first->second;
}

Result<PackageRelationships::Set> PackageRelationships::read(std::string_view source) const
{
    auto part = m_parts.findIfThere(Markup::relationshipsPartNameOf(source));
    if (!part)
        return part.error();
    if (*part == nullptr)
        return Set{};
    // what the targets mean depends on the source, which the name of the part tells
    auto document =
        m_parts.readAs<Markup::Relationships>(**part, [&](std::span<const std::byte> bytes, std::string_view subject) {
            return Markup::Relationships::parse(bytes, source, subject, m_parts.faults());
        });
    if (!document)
        return document.error();
    return Set{std::move(*document), *part};
}

RelationshipPtr PackageRelationships::record(std::string_view source, const Markup::Relationship& relationship)
{
    if (m_packageName == nullptr)
        m_packageName = std::make_shared<const std::string>(m_parts.displayName());
    auto record = std::make_shared<RelationshipRecord>();
    record->source = source;
    record->id = Text::toString2(std::string_view{relationship.id});
    record->type = Text::toString2(std::string_view{relationship.type});
    record->target = relationship.target;
    record->mode = relationship.mode;
    record->packageName = m_packageName;
    return record;
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
