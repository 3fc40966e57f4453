#include "host/core/opc/markup/relationships.h"

#include "host/core/errors/make_error.h"
#include "host/core/errors/rollback.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/relationships_reader.h"
#include "host/core/opc/markup/rule_error.h"

#include <algorithm>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

constexpr std::string_view newDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"></Relationships>";
constexpr std::size_t endTagLength = std::string_view{"</Relationships>"}.size();

std::string idOf(std::size_t number)
{
    return "rId" + std::to_string(number);
}

void appendElement(std::string& text, const std::string& prefix, const Relationship& relationship,
                   RepeatedAttribute& type)
{
    text.append("<").append(prefix).append("Relationship Id=\"");
    appendEscapedAttribute(text, relationship.id);
    text += "\" Type=\"";
    type.append(text, relationship.type);
    text += "\" Target=\"";
    appendEscapedAttribute(text, relationship.target);
    text.append(relationship.mode == OpcTargetMode::external ? "\" TargetMode=\"External\"/>" : "\"/>");
}

} // namespace

Relationships::Relationships() : m_text{newDocument}, m_endTag{newDocument.size() - endTagLength, newDocument.size()} {}

Expected<Relationships, ErrorCode2> Relationships::parse(std::span<const std::byte> bytes, std::string_view source,
                                                         std::string_view subject, FaultLog* faults)
{
    auto document = parseXml(bytes, subject);
    if (!document)
        return std::move(document).error();
    Relationships relationships;
    relationships.m_relationships.reserve(document->elementCount());
    relationships.m_index.reserve(document->elementCount());
    const XmlElement root = document->root();
    RelationshipsReader reader{relationships, source, {faults, subject}};
    if (const SchemaFault fault = reader.read(root); !fault.isNone())
        return fault.onSubject(subject);
    relationships.m_hasCompatibility = reader.isCompatibilityUsed();
    relationships.m_prefix = prefixWithColon(root);
    relationships.m_endTag = root.endTag();
    relationships.m_text = std::move(*document).takeText();
    return relationships;
}

const Relationship* Relationships::find(std::string_view id) const
{
    const auto place = m_index.find(id, idAt());
    return place == Text::NameIndex::none ? nullptr : &m_relationships[place];
}

Expected<const Relationship*, ErrorCode2> Relationships::add(std::string_view source, std::string_view type,
                                                             std::string_view target, OpcTargetMode mode)
{
    const Text::SharedText known = lastType();
    Relationship relationship{{}, Text::SharedText{known, type}, std::string{target}, mode, {}};
    if (!isXmlText(type) || !isXmlText(target))
        return ruleError(OpcError::invalidRelationships, inQuotes(target), "M1.28",
                         "the type or the target holds a character that XML does not allow");
    std::string diagnostic;
    SchemaFault fault = relationshipFault(source, relationship, known, diagnostic);
    if (!fault.isNone())
        return fault.onSubject(inQuotes(target));
    // What is read is put up with; what is written is right.
    if (!diagnostic.empty())
        return Errors::makeError(OpcError::invalidRelationships, inQuotes(target), diagnostic);
    std::size_t number = m_firstFreeNumber;
    for (relationship.id = idOf(number); !enter(relationship); relationship.id = idOf(number))
        ++number;
    m_firstFreeNumber = number + 1;
    m_isChanged = true;
    return &m_relationships.back();
}

void Relationships::remove(std::string_view id)
{
    const Relationship* const found = find(id);
    if (found == nullptr)
        return;
    if (!found->range.isEmpty())
        m_erased.push_back(found->range);
    const auto place = found - m_relationships.data();
    m_index.removeInOrder(static_cast<Text::NameIndex::Place>(place), idAt());
    m_relationships.erase(m_relationships.begin() + place);
    m_firstFreeNumber = 1;
    m_isChanged = true;
}

std::string Relationships::serialised() const
{
    if (m_hasCompatibility && m_isChanged)
        return writtenAnew();
    TextEdits edits;
    for (const TextRange& range : m_erased)
        edits.erase(range);
    std::string added;
    RepeatedAttribute type;
    for (const Relationship& relationship : m_relationships) {
        if (relationship.range.isEmpty())
            appendElement(added, m_prefix, relationship, type);
    }
    if (!added.empty())
        edits.insertBeforeEnd(m_endTag, m_prefix + "Relationships", std::move(added));
    return edits.appliedTo(m_text);
}

std::string Relationships::writtenAnew() const
{
    std::string text;
    RepeatedAttribute type;
    for (const Relationship& relationship : m_relationships)
        appendElement(text, {}, relationship, type);
    return std::string{newDocument}.insert(newDocument.size() - endTagLength, text);
}

bool Relationships::enter(Relationship& relationship)
{
    m_relationships.push_back(std::move(relationship));
    Errors::Rollback takeBack{[&] {
        relationship = std::move(m_relationships.back());
        m_relationships.pop_back();
    }};
    if (m_index.add(idAt()) != Text::NameIndex::none)
        return false;
    takeBack.dismiss();
    return true;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
