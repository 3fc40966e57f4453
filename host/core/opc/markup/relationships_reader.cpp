#include "host/core/opc/markup/relationships_reader.h"

#include "host/core/opc/limits.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/target_reference.h"
#include "host/core/opc/markup/uri_characters.h"
#include "host/core/opc/markup/xml_characters.h"

#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

SchemaFault relationshipsFault(std::string_view rule, std::string what)
{
    return {OpcError::invalidRelationships, rule, std::move(what)};
}

bool isUriText(std::string_view text) noexcept
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isWide = (text[i] & 0x80) != 0;
        if (!isReferenceCharacter(text[i]) && !isWide && percentDecoded(text.substr(i)) < 0)
            return false;
    }
    return !text.empty();
}

SchemaFault required(const XmlElement& element, std::string_view name, std::string_view rule, std::string_view& value)
{
    const XmlAttribute* const attribute = element.attribute({}, name);
    if (attribute == nullptr)
        return relationshipsFault(rule, "a relationship without '" + std::string{name} + "'");
    value = attribute->value;
    return {};
}

SchemaFault readMode(const XmlElement& element, OpcTargetMode& mode)
{
    const XmlAttribute* const attribute = element.attribute({}, "TargetMode");
    if (attribute == nullptr || attribute->value == "Internal")
        return {};
    mode = OpcTargetMode::external;
    if (attribute->value == "External")
        return {};
    return {.what = "the target mode " + inQuotes(attribute->value) + " is neither 'Internal' nor 'External'"};
}

/// @param known  a type that this one may be equal to
SchemaFault readFields(const XmlElement& element, const Text::SharedText& known, Relationship& relationship)
{
    std::string_view id;
    if (auto fault = required(element, "Id", "M1.26", id); !fault.isNone())
        return fault;
    std::string_view type;
    if (auto fault = required(element, "Type", "M1.27", type); !fault.isNone())
        return fault;
    std::string_view target;
    if (auto fault = required(element, "Target", "M1.28", target); !fault.isNone())
        return fault;
    relationship.id = trimmed(id);
    relationship.type = {known, trimmed(type)};
    relationship.target = target;
    relationship.range = element.range();
    return readMode(element, relationship.mode);
}

} // namespace

SchemaFault relationshipFault(std::string_view source, const Relationship& relationship, const Text::SharedText& known,
                              std::string& diagnostic)
{
    if (!relationship.type.isSharedWith(known) && !isUriText(relationship.type))
        return relationshipsFault("M1.27", "the type " + inQuotes(relationship.type) + " is no URI");
    if (relationship.mode == OpcTargetMode::external)
        return {};
    if (std::string fault = internalTargetFault(relationship.target); !fault.empty())
        return {OpcError::invalidRelationships, {}, std::move(fault)};
    const ResolvedTarget target = resolveTarget(source, relationship.target);
    if (isRelationshipsPartName(target.partName))
        return relationshipsFault("M1.25", "the target " + inQuotes(relationship.target) + " is a relationships part");
    diagnostic = target.warning.empty() ? target.fault : target.warning;
    return {};
}

SchemaFault RelationshipsReader::read(const XmlElement& root)
{
    if (isRelationshipsPartName(m_source))
        return relationshipsFault("M1.25", "the source " + inQuotes(m_source) + " is a relationships part");
    if (auto fault = rootFault(root, relationshipsNamespace, "Relationships"); !fault.isNone())
        return fault;
    return m_compatibility.within(root, [&] { return readRoot(root); });
}

SchemaFault RelationshipsReader::readRoot(const XmlElement& root)
{
    if (auto fault = m_faults.passOver(m_compatibility.attributes(root, {})); !fault.isNone())
        return fault;
    if (auto fault = m_faults.passOver(textFault(root)); !fault.isNone())
        return fault;
    return m_compatibility.children(
        root, [this](const XmlElement& child) { return m_faults.passOver(readRelationship(child)); });
}

// The schema lets a relationship hold text, which means nothing.
SchemaFault RelationshipsReader::readRelationship(const XmlElement& element)
{
    if (element.name() != "Relationship")
        return unexpectedElement(element);
    if (auto fault = m_compatibility.attributes(element, {"Id", "Type", "Target", "TargetMode"}); !fault.isNone())
        return fault;
    if (auto fault = m_compatibility.children(element, unexpectedElement); !fault.isNone())
        return fault;
    Relationship relationship;
    const Text::SharedText known = m_relationships.lastType();
    if (auto fault = readFields(element, known, relationship); !fault.isNone())
        return fault;
    if (!isNcName(relationship.id))
        return relationshipsFault("M1.26", inQuotes(relationship.id) + " is no id");
    std::string diagnostic;
    if (auto fault = relationshipFault(m_source, relationship, known, diagnostic); !fault.isNone())
        return fault;
    note(relationship, diagnostic);
    if (!m_relationships.enter(relationship))
        return {OpcError::duplicateRelationshipId, "M1.26", "the id " + inQuotes(relationship.id) + " stands twice"};
    return {};
}

void RelationshipsReader::note(const Relationship& relationship, const std::string& diagnostic)
{
    auto& diagnostics = m_relationships.m_diagnostics;
    if (diagnostic.empty() || diagnostics.size() > Limits::diagnostics)
        return;
    if (diagnostics.size() == Limits::diagnostics)
        diagnostics.emplace_back("There are more relationships of that sort.");
    else
        diagnostics.push_back("The relationship " + inQuotes(relationship.id) + ": " + diagnostic + ".");
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
