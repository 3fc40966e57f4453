#include "host/core/opc/markup/core_properties.h"

#include "host/core/opc/markup/core_properties_reader.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/text/date_time_words.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

constexpr std::string_view newDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\""
    " xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\""
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"></cp:coreProperties>";
constexpr std::size_t endTagLength = std::string_view{"</cp:coreProperties>"}.size();

constexpr std::array<CorePropertyName, corePropertyCount> names{{
    {corePropertiesNamespace, "category"},
    {corePropertiesNamespace, "contentStatus"},
    {corePropertiesNamespace, "contentType"},
    {dublinCoreTermsNamespace, "created"},
    {dublinCoreNamespace, "creator"},
    {dublinCoreNamespace, "description"},
    {dublinCoreNamespace, "identifier"},
    {corePropertiesNamespace, "keywords"},
    {dublinCoreNamespace, "language"},
    {corePropertiesNamespace, "lastModifiedBy"},
    {corePropertiesNamespace, "lastPrinted"},
    {dublinCoreTermsNamespace, "modified"},
    {corePropertiesNamespace, "revision"},
    {dublinCoreNamespace, "subject"},
    {dublinCoreNamespace, "title"},
    {corePropertiesNamespace, "version"},
}};

/// A prefix that the document has, or our own, which the element then declares itself.
std::string usablePrefix(const std::string& declared, std::string_view own, std::string_view namespaceUri,
                         std::string& declarations)
{
    if (!declared.empty())
        return declared;
    declarations.append(" xmlns:").append(own).append("=\"").append(namespaceUri).append("\"");
    return std::string{own};
}

/// Of a date that is one. The dates of the Dublin Core may end with the year, the month, the day or the minute; that of
/// printing is a dateTime of XML Schema.
bool hasSeconds(std::string_view date)
{
    constexpr std::size_t hoursAndMinutes = std::string_view{"T00:00"}.size();
    const std::string_view time = date.substr(std::min(date.find('T'), date.size()));
    return time.size() > hoursAndMinutes && time[hoursAndMinutes] == ':';
}

ErrorCode2 settingError(CoreProperty property, std::string_view what)
{
    return ruleError(OpcError::invalidCoreProperties, nameOf(property).name, "M1.20", what);
}

} // namespace

const CorePropertyName& nameOf(CoreProperty property) noexcept
{
    return names[static_cast<std::size_t>(property)];
}

bool isDate(CoreProperty property) noexcept
{
    return property == CoreProperty::created || property == CoreProperty::modified ||
           property == CoreProperty::lastPrinted;
}

CoreProperties::CoreProperties()
    : m_text{newDocument}, m_endTag{newDocument.size() - endTagLength, newDocument.size()}, m_prefix{"cp:"},
      m_dublinCorePrefix{"dc"}, m_termsPrefix{"dcterms"}, m_schemaPrefix{"xsi"}
{
}

Expected<CoreProperties, ErrorCode2> CoreProperties::parse(std::span<const std::byte> bytes, std::string_view subject,
                                                           FaultLog* faults)
{
    auto document = parseXml(bytes, subject);
    if (!document)
        return std::move(document).error();
    CoreProperties properties;
    const XmlElement root = document->root();
    if (const SchemaFault fault = CorePropertiesReader{properties, {faults, subject}}.read(root); !fault.isNone())
        return fault.onSubject(subject);
    properties.m_endTag = root.endTag();
    properties.m_text = std::move(*document).takeText();
    return properties;
}

const std::optional<std::string>& CoreProperties::text(CoreProperty property) const noexcept
{
    return m_entries[static_cast<std::size_t>(property)].text;
}

Expected<void, ErrorCode2> CoreProperties::set(CoreProperty property, std::string_view text)
{
    Entry& changed = entry(property);
    if (changed.text == text)
        return {};
    if (property == CoreProperty::contentType)
        return settingError(property, "only the 1st edition has that property; it is not written anew");
    if (!isXmlText(text))
        return settingError(property, inQuotes(text) + " holds a character that XML does not allow");
    if (isDate(property) && !Text::isDateTime(text))
        return settingError(property, inQuotes(text) + " is no date");
    if (property == CoreProperty::lastPrinted && !hasSeconds(text))
        return settingError(property, inQuotes(text) + " tells no time to the second, as XML Schema's dateTime does");
    changed.text = text;
    changed.isChanged = true;
    m_isChanged = true;
    return {};
}

void CoreProperties::remove(CoreProperty property)
{
    Entry& changed = entry(property);
    if (!changed.text)
        return;
    changed.text.reset();
    changed.isChanged = true;
    m_isChanged = true;
}

std::string CoreProperties::serialised() const
{
    TextEdits edits;
    std::string added;
    for (std::size_t i = 0; i < corePropertyCount; ++i) {
        const Entry& one = m_entries[i];
        if (!one.isChanged)
            continue;
        std::string element = one.text ? elementText(static_cast<CoreProperty>(i)) : std::string{};
        if (one.range.isEmpty())
            added += element;
        else
            edits.replace(one.range, std::move(element));
    }
    if (!added.empty())
        edits.insertBeforeEnd(m_endTag, m_prefix + "coreProperties", std::move(added));
    return edits.appliedTo(m_text);
}

std::string CoreProperties::elementText(CoreProperty property) const
{
    const CorePropertyName& name = nameOf(property);
    const bool isTerm = name.namespaceUri == dublinCoreTermsNamespace;
    std::string declarations;
    std::string attributes;
    std::string qualified = m_prefix;
    if (name.namespaceUri == dublinCoreNamespace) {
        qualified = usablePrefix(m_dublinCorePrefix, "dc", dublinCoreNamespace, declarations) + ":";
    } else if (isTerm) {
        const std::string terms = usablePrefix(m_termsPrefix, "dcterms", dublinCoreTermsNamespace, declarations);
        const std::string schema = usablePrefix(m_schemaPrefix, "xsi", schemaInstanceNamespace, declarations);
        attributes = " " + schema + ":type=\"" + terms + ":W3CDTF\"";
        qualified = terms + ":";
    }
    qualified += name.name;
    return "<" + qualified + declarations + attributes + ">" + escapedText(text(property).value_or(std::string{})) +
           "</" + qualified + ">";
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
