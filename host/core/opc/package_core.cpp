#include "host/core/opc/package_core.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/media_type_text.h"
#include "host/core/opc/markup/opc_names.h"

#include <algorithm>

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
    Markup::CoreProperties changed = m_state->document;
    if (auto set = changed.set(property, text); !set)
        return set;
    if (auto created = createPart(); !created)
        return created;
    m_state->document = std::move(changed);
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
    if (m_state->part->item->hasBytes() && !m_state->document.isChanged())
        return;
    const std::string text = m_state->document.serialised();
    const auto bytes = std::as_bytes(std::span{text});
    generated[m_state->part->item.get()] = {bytes.begin(), bytes.end()};
}

Result<PackageCore::State> PackageCore::read()
{
    auto relationships = m_relationships.recordsByType(Markup::packageSource, Markup::corePropertiesRelationshipType);
    if (!relationships)
        return relationships.error();
    if (relationships->size() > 1)
        return Errors::makeError(OpcError::severalCoreProperties, m_parts.displayName(), "M4.1");
    if (auto checked = checkSinglePart(); !checked)
        return checked.error();
    if (relationships->empty())
        return State{};
    return readFrom(*relationships->front());
}

/// Readers that look for the media type instead of the relationship must find the same part.
Result<> PackageCore::checkSinglePart() const
{
    auto parts = m_parts.all();
    if (!parts)
        return parts.error();
    const auto count = std::ranges::count_if(**parts, [](const PartPtr& part) {
        return Markup::isSameMediaType(part->mediaType, Markup::corePropertiesMediaType);
    });
    if (count <= 1)
        return {};
    return Errors::makeError(OpcError::severalCoreProperties, m_parts.displayName(), "M4.1");
}

Result<PackageCore::State> PackageCore::readFrom(const RelationshipRecord& relationship)
{
    if (relationship.mode == OpcTargetMode::external)
        return Errors::makeError(OpcError::invalidCoreProperties, relationship.subject(),
                                 "they stand outside the package (M4.1)");
    const Markup::ResolvedTarget target = relationship.resolved();
    if (!target.isPartName())
        return Errors::makeError(OpcError::invalidCoreProperties, relationship.subject(), target.fault);
    auto part = m_parts.findIfThere(target.partName);
    if (!part)
        return part.error();
    if (*part == nullptr)
        return State{{}, nullptr, target.partName};
    return readPart(*part);
}

Result<PackageCore::State> PackageCore::readPart(const PartPtr& part)
{
    const std::string subject = m_parts.subjectOf(part->name);
    if (!Markup::isSameMediaType(part->mediaType, Markup::corePropertiesMediaType))
        return Errors::makeError(OpcError::invalidCoreProperties, subject,
                                 "the content type is not that of core properties (M4.1)");
    auto bytes = m_parts.read(*part);
    if (!bytes)
        return bytes.error();
    auto document = Markup::CoreProperties::parse(*bytes, subject);
    if (!document)
        return document.error();
    return State{std::move(*document), part, {}};
}

Result<> PackageCore::createPart()
{
    if (m_state->part != nullptr)
        return {};
    const bool isRelated = !m_state->danglingName.empty();
    auto part =
        isRelated ? m_parts.create(m_state->danglingName, Markup::corePropertiesMediaType, PackageParts::Typing::byName)
                  : createPartOfFreeName();
    if (!part)
        return part.error();
    if (!isRelated) {
        auto related = m_relationships.add(Markup::packageSource, Markup::corePropertiesRelationshipType, (*part)->name,
                                           OpcTargetMode::internal);
        if (!related) {
            m_parts.remove(*part);
            return related.error();
        }
    }
    m_state->part = *part;
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
