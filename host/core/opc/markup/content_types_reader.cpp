#include "host/core/opc/markup/content_types_reader.h"

#include "host/core/opc/markup/media_type_text.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/part_name.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/xml_characters.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

SchemaFault typesFault(std::string_view rule, std::string what)
{
    return {OpcError::invalidContentTypes, rule, std::move(what)};
}

/// Markup compatibility is known of many documents, and forbidden in this one.
SchemaFault compatibilityFault(const XmlElement& element)
{
    constexpr std::string_view rule = "M2.10";
    if (element.namespaceUri() == markupCompatibilityNamespace)
        return typesFault(rule, "the element " + inQuotes(element.writtenName()) + " of markup compatibility");
    for (const XmlAttribute& attribute : element.attributes()) {
        if (attribute.namespaceUri == markupCompatibilityNamespace)
            return typesFault(rule, "the attribute " + inQuotes(attribute.name) + " of markup compatibility");
    }
    return {};
}

SchemaFault typeFault(const XmlElement& element, std::string_view rule)
{
    const XmlAttribute* const type = element.attribute({}, "ContentType");
    if (type == nullptr)
        return typesFault(rule, inQuotes(element.writtenName()) + " has no 'ContentType'");
    const std::string fault = mediaTypeFault(type->value);
    if (fault.empty())
        return {};
    return {OpcError::invalidMediaType, {}, fault};
}

} // namespace

SchemaFault ContentTypesReader::read(const XmlElement& root)
{
    if (auto fault = rootFault(root, contentTypesNamespace, "Types"); !fault.isNone())
        return fault;
    if (auto fault = m_faults.passOver(compatibilityFault(root)); !fault.isNone())
        return fault;
    if (auto fault = m_faults.passOver(attributeFault(root, {})); !fault.isNone())
        return fault;
    for (auto child = root.firstChild(); child; child = child->nextSibling()) {
        if (auto fault = m_faults.passOver(readEntry(*child)); !fault.isNone())
            return fault;
    }
    return m_faults.passOver(textFault(root));
}

SchemaFault ContentTypesReader::readEntry(const XmlElement& element)
{
    if (auto fault = compatibilityFault(element); !fault.isNone())
        return fault;
    const bool isDefault = element.is(contentTypesNamespace, "Default");
    if (!isDefault && !element.is(contentTypesNamespace, "Override"))
        return unexpectedElement(element);
    if (auto child = element.firstChild()) {
        auto fault = compatibilityFault(*child);
        return fault.isNone() ? unexpectedElement(*child) : fault;
    }
    if (auto fault = textFault(element); !fault.isNone())
        return fault;
    return isDefault ? readDefault(element) : readOverride(element);
}

SchemaFault ContentTypesReader::readDefault(const XmlElement& element)
{
    if (auto fault = attributeFault(element, {"Extension", "ContentType"}); !fault.isNone())
        return fault;
    const XmlAttribute* const extension = element.attribute({}, "Extension");
    if (extension == nullptr)
        return typesFault("M2.6", "a Default without 'Extension'");
    if (!isDefaultExtension(extension->value))
        return typesFault("M2.6", inQuotes(extension->value) + " is no extension");
    if (auto fault = typeFault(element, "M2.6"); !fault.isNone())
        return fault;
    if (!m_types.enterRead(m_types.m_defaults, extension->value, element))
        return typesFault("M2.5", "a second Default for the extension " + inQuotes(extension->value));
    return {};
}

SchemaFault ContentTypesReader::readOverride(const XmlElement& element)
{
    if (auto fault = attributeFault(element, {"PartName", "ContentType"}); !fault.isNone())
        return fault;
    const XmlAttribute* const name = element.attribute({}, "PartName");
    if (name == nullptr)
        return typesFault("M2.7", "an Override without 'PartName'");
    const PartName partName = partNameFromIri(std::string{trimmed(name->value)});
    if (!partName.isValid())
        return typesFault("M2.7", "the PartName " + inQuotes(name->value) + " of an Override: " + partName.fault);
    if (auto fault = typeFault(element, "M2.7"); !fault.isNone())
        return fault;
    if (!m_types.enterRead(m_types.m_overrides, partName.text, element))
        return typesFault("M2.5", "a second Override for the part " + inQuotes(partName.text));
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
