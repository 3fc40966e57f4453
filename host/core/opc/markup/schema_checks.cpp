#include "host/core/opc/markup/schema_checks.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/rule_error.h"

#include <algorithm>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

ErrorCode2 SchemaFault::onSubject(std::string_view subject) const
{
    if (rule.empty())
        return Errors::makeError(error, subject, what);
    return ruleError(error, subject, rule, what);
}

SchemaFault SchemaFaultLog::passOver(SchemaFault fault) const
{
    if (log == nullptr || fault.isNone())
        return fault;
    log->add(fault.onSubject(subject));
    return {};
}

SchemaFault rootFault(const XmlElement& root, std::string_view namespaceUri, std::string_view name)
{
    if (root.is(namespaceUri, name))
        return {};
    return {.what = "the root element is " + inQuotes(root.writtenName()) + " of the namespace " +
                    inQuotes(root.namespaceUri()) + ", not '" + std::string{name} + "' of '" +
                    std::string{namespaceUri} + "'"};
}

SchemaFault attributeFault(const XmlElement& element, std::initializer_list<std::string_view> allowed)
{
    for (const XmlAttribute& attribute : element.attributes()) {
        if (!attribute.namespaceUri.empty() ||
            std::find(allowed.begin(), allowed.end(), attribute.name) == allowed.end())
            return unexpectedAttribute(element, attribute);
    }
    return {};
}

SchemaFault unexpectedAttribute(const XmlElement& element, const XmlAttribute& attribute)
{
    const bool isOfXml = attribute.namespaceUri == xmlNamespace || attribute.namespaceUri == schemaInstanceNamespace;
    const std::string prefix = attribute.prefix.empty() ? "" : std::string{attribute.prefix} + ":";
    return {.rule = isOfXml ? "M1.21" : "M1.20",
            .what = "the attribute " + inQuotes(prefix + std::string{attribute.name}) + " may not stand on " +
                    inQuotes(element.writtenName())};
}

SchemaFault unexpectedElement(const XmlElement& element)
{
    return {.what = "the element " + inQuotes(element.writtenName()) + " of the namespace " +
                    inQuotes(element.namespaceUri()) + " may not stand here"};
}

SchemaFault textFault(const XmlElement& element)
{
    if (!element.hasText())
        return {};
    return {.what = "text in " + inQuotes(element.writtenName()) + ", which holds none"};
}

std::string prefixWithColon(const XmlElement& element)
{
    return element.prefix().empty() ? std::string{} : std::string{element.prefix()} + ":";
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
