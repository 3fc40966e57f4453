#include "host/core/opc/package_core.h"

#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/media_type_text.h"
#include "host/core/opc/markup/opc_names.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

Result<std::optional<std::string>> PackageCore::text(Markup::CoreProperty property)
{
    if (auto loaded = load(); !loaded)
        return loaded.error();
    return m_state->document.text(property);
}

Result<> PackageCore::set(Markup::CoreProperty property, std::string_view text)
{
    if (auto loaded = load(); !loaded)
        return loaded;
    const std::optional<std::string>& present = m_state->document.text(property);
    // what stands there already is left as it stands, so that nothing is rewritten that nobody changed
    if (present.has_value() ? *present == text && !text.empty() : text.empty())
        return {};
    if (text.empty()) {
        m_state->document.remove(property);
        return {};
    }
    auto changed = stateToChange();
    if (!changed)
        return changed.error();
    if (auto set = changed->document.set(property, text); !set)
        return set;
    if (auto related = m_state->part == nullptr ? relatePart(*changed) : Result<>{}; !related)
        return related;
    *m_state = std::move(*changed);
    return {};
}

Result<> PackageCore::load()
{
    if (m_state != nullptr)
        return {};
    auto state = read();
    if (!state)
        return state.error();
    m_state = std::make_unique<State>(std::move(*state));
    return {};
}

std::string PackageCore::partName() const
{
    return m_state->part == nullptr ? std::string{} : m_state->part->name;
}

void PackageCore::generate(PackageItems::Generated& generated) const
{
    if (m_state == nullptr || m_state->part == nullptr)
        return;
    if (m_state->part->hasBytes() && !m_state->document.isChanged())
        return;
    generated[m_state->part.get()] = m_state->document.serialised();
}

Result<PackageCore::State> PackageCore::read()
{
    auto relationships = m_relationships.ofType(Markup::packageSource, Markup::corePropertiesRelationshipType);
    if (!relationships)
        return relationships.error();
    if (relationships->size() > 1)
        return Errors::makeError(OpcError::severalCoreProperties, m_parts.displayName(), "M4.1");
    if (auto part = partOfType(); !part)
        return part.error();
    if (relationships->empty())
        return State{};
    return readFrom(*relationships->front());
}

/// Readers that look for the media type instead of the relationship must find the same part.
Result<PartPtr> PackageCore::partOfType() const
{
    auto parts = m_parts.all();
    if (!parts)
        return parts.error();
    PartPtr found;
    for (const PartPtr& part : **parts) {
        if (!Markup::isSameMediaType(part->mediaType, Markup::corePropertiesMediaType))
            continue;
        if (found != nullptr)
            return Errors::makeError(OpcError::severalCoreProperties, m_parts.displayName(), "M4.1");
        found = part;
    }
    return found;
}

Result<PackageCore::State> PackageCore::readFrom(const Markup::Relationship& relationship)
{
    const auto subject = [&] {
        return relationshipSubject(m_parts.displayName(), relationship.id, Markup::packageSource);
    };
    if (relationship.mode == OpcTargetMode::external)
        return Errors::makeError(OpcError::invalidCoreProperties, subject(), "they stand outside the package (M4.1)");
    const Markup::ResolvedTarget target = Markup::resolveTarget(Markup::packageSource, relationship.target);
    if (!target.isPartName())
        return Errors::makeError(OpcError::invalidCoreProperties, subject(), target.fault);
    auto part = m_parts.findIfThere(target.partName);
    if (!part)
        return part.error();
    if (*part == nullptr)
        return State{{}, nullptr, target.partName};
    return readPart(*part);
}

Result<PackageCore::State> PackageCore::readPart(const PartPtr& part) const
{
    const std::string subject = m_parts.subjectOf(part->name);
    if (!Markup::isSameMediaType(part->mediaType, Markup::corePropertiesMediaType))
        return Errors::makeError(OpcError::invalidCoreProperties, subject,
                                 "the content type is not that of core properties (M4.1)");
    auto bytes = m_parts.read(*part);
    if (!bytes)
        return bytes.error();
    auto document = Markup::CoreProperties::parse(*bytes, subject, m_parts.faults());
    if (!document)
        return document.error();
    return State{std::move(*document), part, {}};
}

/// A part of the media type that nothing leads to becomes that of the package: a second one would break M4.1.
Result<PackageCore::State> PackageCore::stateToChange() const
{
    if (m_state->part != nullptr)
        return *m_state;
    auto part = partOfType();
    if (!part)
        return part.error();
    return *part == nullptr ? *m_state : readPart(*part);
}

Result<> PackageCore::relatePart(State& state)
{
    if (state.part == nullptr)
        return createPart(state);
    auto related =
        m_relationships.replaceByType(Markup::packageSource, Markup::corePropertiesRelationshipType, state.part->name);
    return related ? Result<>{} : Result<>{related.error()};
}

Result<> PackageCore::createPart(State& state)
{
    const bool isRelated = !state.danglingName.empty();
    auto part = isRelated
                    ? m_parts.create(state.danglingName, Markup::corePropertiesMediaType, PackageParts::Typing::byName)
                    : createPartOfFreeName();
    if (!part)
        return part.error();
    Errors::Rollback takeBack{[&] { m_parts.remove(*part); }};
    if (!isRelated) {
        auto related = m_relationships.add(Markup::packageSource, Markup::corePropertiesRelationshipType, (*part)->name,
                                           OpcTargetMode::internal);
        if (!related)
            return related.error();
    }
    takeBack.dismiss();
    state.part = *part;
    return {};
}

/// "/docProps/core.xml" by custom; a name beside it when that is taken by something else.
Result<PartPtr> PackageCore::createPartOfFreeName()
{
    const auto create = [this](const std::string& name) {
        return m_parts.create(name, Markup::corePropertiesMediaType, PackageParts::Typing::byName);
    };
    const ErrorCode2 taken{static_cast<int>(OpcError::partExists), opc_error_category()};
    auto part = create("/docProps/core.xml");
    for (int number = 1; !part && part.error() == taken; ++number)
        part = create("/docProps/core" + std::to_string(number) + ".xml");
    return part;
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
