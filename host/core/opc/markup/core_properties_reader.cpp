#include "host/core/opc/markup/core_properties_reader.h"

#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/xml_characters.h"
#include "host/core/text/date_time_words.h"
#include "host/core/text/text_view.h"

#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

SchemaFault propertiesFault(std::string_view rule, std::string what)
{
    return {OpcError::invalidCoreProperties, rule, std::move(what)};
}

std::optional<CoreProperty> propertyOf(const XmlElement& element) noexcept
{
    for (std::size_t i = 0; i < corePropertyCount; ++i) {
        const auto property = static_cast<CoreProperty>(i);
        if (element.is(nameOf(property).namespaceUri, nameOf(property).name))
            return property;
    }
    return std::nullopt;
}

bool hasW3cDateType(const XmlElement& element, std::string_view typeName)
{
    typeName = trimmed(typeName);
    const std::size_t colon = typeName.find(':');
    const bool hasPrefix = colon != std::string_view::npos;
    const auto namespaceUri = element.namespaceOf(hasPrefix ? typeName.substr(0, colon) : std::string_view{});
    return namespaceUri == dublinCoreTermsNamespace && typeName.substr(hasPrefix ? colon + 1 : 0) == "W3CDTF";
}

bool needsType(const XmlElement& element) noexcept
{
    return element.namespaceUri() == dublinCoreTermsNamespace;
}

bool mayHaveLanguage(const XmlElement& element) noexcept
{
    return element.is(corePropertiesNamespace, "keywords") || element.is(corePropertiesNamespace, "value");
}

SchemaFault attributeFault(const XmlElement& element, const XmlAttribute& attribute)
{
    const std::string name = inQuotes(element.writtenName());
    if (attribute.namespaceUri == markupCompatibilityNamespace)
        return propertiesFault("M4.2", "markup compatibility on " + name);
    if (attribute.is(schemaInstanceNamespace, "type")) {
        if (!needsType(element))
            return propertiesFault("M4.5", "'xsi:type' on " + name);
        if (!hasW3cDateType(element, attribute.value))
            return propertiesFault("M4.5", "the type of " + name + " is " + inQuotes(attribute.value) +
                                               ", not 'dcterms:W3CDTF'");
        return {};
    }
    if (!attribute.is(xmlNamespace, "lang"))
        return unexpectedAttribute(element, attribute);
    return mayHaveLanguage(element) ? SchemaFault{} : propertiesFault("M4.4", "'xml:lang' on " + name);
}

SchemaFault attributesFault(const XmlElement& element)
{
    for (const XmlAttribute& attribute : element.attributes()) {
        if (SchemaFault fault = attributeFault(element, attribute); !fault.isNone())
            return fault;
    }
    if (needsType(element) && element.attribute(schemaInstanceNamespace, "type") == nullptr)
        return propertiesFault("M4.5", "no 'xsi:type' on " + inQuotes(element.writtenName()));
    return {};
}

SchemaFault unknownElement(const XmlElement& element)
{
    if (element.namespaceUri() == markupCompatibilityNamespace)
        return propertiesFault("M4.2", "the element " + inQuotes(element.writtenName()) + " of markup compatibility");
    if (element.namespaceUri() == dublinCoreTermsNamespace)
        return propertiesFault("M4.3", inQuotes(element.writtenName()) + " refines an element of the Dublin Core");
    return unexpectedElement(element);
}

SchemaFault nestedFault(const XmlElement& element)
{
    const auto child = element.firstChild();
    if (!child)
        return {};
    if (child->namespaceUri() == markupCompatibilityNamespace)
        return unknownElement(*child);
    return propertiesFault("M1.20",
                           inQuotes(child->writtenName()) + " stands inside " + inQuotes(element.writtenName()));
}

void appendKeywords(std::string& keywords, const std::string& more)
{
    const std::string_view words = trimmed(more);
    if (words.empty())
        return;
    if (!keywords.empty())
        keywords += "; ";
    keywords += words;
}

SchemaFault readKeywords(const XmlElement& element, std::string& keywords)
{
    const std::vector<std::string> runs = element.textRuns();
    appendKeywords(keywords, runs.front());
    std::size_t run = 1;
    for (auto child = element.firstChild(); child; child = child->nextSibling(), ++run) {
        if (!child->is(corePropertiesNamespace, "value"))
            return nestedFault(element);
        if (SchemaFault fault = attributesFault(*child); !fault.isNone())
            return fault;
        if (SchemaFault fault = nestedFault(*child); !fault.isNone())
            return fault;
        appendKeywords(keywords, child->text());
        appendKeywords(keywords, runs[run]);
    }
    return {};
}

SchemaFault readText(CoreProperty property, const XmlElement& element, std::string& text)
{
    if (property == CoreProperty::keywords)
        return readKeywords(element, text);
    if (SchemaFault fault = nestedFault(element); !fault.isNone())
        return fault;
    text = element.text();
    if (!isDate(property) || Text::isDateTime(text))
        return {};
    return propertiesFault("M1.20", inQuotes(element.writtenName()) + " is " + inQuotes(text) + ", which is no date");
}

std::string prefixFor(const XmlElement& root, std::string_view namespaceUri)
{
    return std::string{root.declaredPrefixOf(namespaceUri).value_or(std::string_view{})};
}

} // namespace

SchemaFault CorePropertiesReader::read(const XmlElement& root)
{
    if (auto fault = rootFault(root, corePropertiesNamespace, "coreProperties"); !fault.isNone())
        return fault;
    if (auto fault = m_faults.passOver(attributesFault(root)); !fault.isNone())
        return fault;
    if (auto fault = m_faults.passOver(textFault(root)); !fault.isNone())
        return fault;
    for (auto child = root.firstChild(); child; child = child->nextSibling()) {
        if (auto fault = m_faults.passOver(readProperty(*child)); !fault.isNone())
            return fault;
    }
    readPrefixes(root);
    return {};
}

SchemaFault CorePropertiesReader::readProperty(const XmlElement& element)
{
    const auto property = propertyOf(element);
    if (!property)
        return unknownElement(element);
    CoreProperties::Entry& entry = m_properties.entry(*property);
    if (entry.text)
        return propertiesFault("M1.20", inQuotes(element.writtenName()) + " stands twice");
    if (auto fault = attributesFault(element); !fault.isNone())
        return fault;
    entry.range = element.range();
    return readText(*property, element, entry.text.emplace());
}

void CorePropertiesReader::readPrefixes(const XmlElement& root)
{
    m_properties.m_prefix = prefixWithColon(root);
    m_properties.m_dublinCorePrefix = prefixFor(root, dublinCoreNamespace);
    m_properties.m_termsPrefix = prefixFor(root, dublinCoreTermsNamespace);
    m_properties.m_schemaPrefix = prefixFor(root, schemaInstanceNamespace);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
