#include "host/core/opc/markup/markup_compatibility.h"

#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/xml_characters.h"

#include <algorithm>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

SchemaFault compatibilityFault(std::string what)
{
    return {OpcError::invalidRelationships, "M1.31", "markup compatibility: " + std::move(what)};
}

bool isOfCompatibility(const XmlElement& element, std::string_view name) noexcept
{
    return element.is(markupCompatibilityNamespace, name);
}

} // namespace

SchemaFault MarkupCompatibility::children(const XmlElement& element, const Visitor& visit)
{
    for (auto one = element.firstChild(); one; one = one->nextSibling()) {
        SchemaFault fault = within(*one, [&] { return child(*one, visit); });
        if (!fault.isNone())
            return fault;
    }
    return {};
}

SchemaFault MarkupCompatibility::child(const XmlElement& element, const Visitor& visit)
{
    if (element.namespaceUri() == m_understood)
        return visit(element);
    if (isOfCompatibility(element, "AlternateContent"))
        return alternatives(element, visit);
    if (!isIgnorable(element.namespaceUri()))
        return unexpectedElement(element);
    m_isUsed = true;
    return isDissolved(element) ? children(element, visit) : SchemaFault{};
}

SchemaFault MarkupCompatibility::alternatives(const XmlElement& element, const Visitor& visit)
{
    m_isUsed = true;
    if (SchemaFault fault = attributes(element, {}); !fault.isNone())
        return fault;
    std::optional<XmlElement> chosen;
    bool hasChoice = false;
    bool hasFallback = false;
    for (auto one = element.firstChild(); one; one = one->nextSibling()) {
        const bool isChoice = isOfCompatibility(*one, "Choice");
        if (hasFallback || !(isChoice || (hasChoice && isOfCompatibility(*one, "Fallback"))))
            return compatibilityFault("AlternateContent holds more than choices and a fallback behind them");
        bool areMet = true;
        if (isChoice) {
            if (SchemaFault fault = requirements(*one, areMet); !fault.isNone())
                return fault;
        }
        hasChoice = true;
        hasFallback = !isChoice;
        if (areMet && !chosen)
            chosen = one;
    }
    if (!hasChoice)
        return compatibilityFault("AlternateContent without a choice");
    return chosen ? within(*chosen, [&] { return children(*chosen, visit); }) : SchemaFault{};
}

SchemaFault MarkupCompatibility::requirements(const XmlElement& choice, bool& areMet)
{
    const XmlAttribute* const requires_ = choice.attribute({}, "Requires");
    if (requires_ == nullptr || trimmed(requires_->value).empty())
        return compatibilityFault("a choice without 'Requires'");
    std::vector<std::string_view> namespaces;
    SchemaFault fault = namespacesOf(choice, requires_->value, namespaces);
    areMet = std::all_of(namespaces.begin(), namespaces.end(), [this](auto uri) { return isUnderstood(uri); });
    return fault;
}

SchemaFault MarkupCompatibility::attributes(const XmlElement& element, std::initializer_list<std::string_view> allowed)
{
    for (const XmlAttribute& attribute : element.attributes()) {
        const bool isPlain = attribute.namespaceUri.empty();
        if (isPlain && std::find(allowed.begin(), allowed.end(), attribute.name) != allowed.end())
            continue;
        if (isPlain || (attribute.namespaceUri != markupCompatibilityNamespace && !isIgnorable(attribute.namespaceUri)))
            return unexpectedAttribute(element, attribute);
        m_isUsed = true;
    }
    return {};
}

SchemaFault MarkupCompatibility::enter(const XmlElement& element)
{
    for (const XmlAttribute& attribute : element.attributes()) {
        if (attribute.namespaceUri != markupCompatibilityNamespace)
            continue;
        m_isUsed = true;
        if (SchemaFault fault = enterAttribute(element, attribute); !fault.isNone())
            return fault;
    }
    return {};
}

SchemaFault MarkupCompatibility::enterAttribute(const XmlElement& element, const XmlAttribute& attribute)
{
    if (attribute.name == "Ignorable")
        return namespacesOf(element, attribute.value, m_ignorable);
    if (attribute.name == "ProcessContent")
        return enterProcessContent(element, attribute.value);
    // Told to editors that keep what they do not understand; there is nothing in them for a reader.
    if (attribute.name == "PreserveElements" || attribute.name == "PreserveAttributes")
        return {};
    if (attribute.name != "MustUnderstand")
        return compatibilityFault("the attribute " + inQuotes(attribute.name) + " is unknown");
    std::vector<std::string_view> namespaces;
    if (SchemaFault fault = namespacesOf(element, attribute.value, namespaces); !fault.isNone())
        return fault;
    const auto strange = std::find_if_not(namespaces.begin(), namespaces.end(),
                                          [this](std::string_view uri) { return isUnderstood(uri); });
    if (strange == namespaces.end())
        return {};
    return compatibilityFault("the namespace " + inQuotes(*strange) + " must be understood, and is not");
}

SchemaFault MarkupCompatibility::enterProcessContent(const XmlElement& element, std::string_view words)
{
    for (auto word = takeWord(words); !word.empty(); word = takeWord(words)) {
        const std::size_t colon = word.find(':');
        std::vector<std::string_view> namespaces;
        if (colon == std::string_view::npos)
            return compatibilityFault("'ProcessContent' names " + inQuotes(word) + ", which has no prefix");
        if (SchemaFault fault = namespacesOf(element, word.substr(0, colon), namespaces); !fault.isNone())
            return fault;
        for (const std::string_view uri : namespaces)
            m_dissolved.push_back({uri, word.substr(colon + 1)});
    }
    return {};
}

SchemaFault MarkupCompatibility::namespacesOf(const XmlElement& element, std::string_view prefixes,
                                              std::vector<std::string_view>& namespaces) const
{
    for (auto prefix = takeWord(prefixes); !prefix.empty(); prefix = takeWord(prefixes)) {
        const auto uri = element.namespaceOf(prefix);
        if (!uri)
            return compatibilityFault("the namespace prefix " + inQuotes(prefix) + " is not declared");
        namespaces.push_back(*uri);
    }
    return {};
}

bool MarkupCompatibility::isUnderstood(std::string_view namespaceUri) const noexcept
{
    return namespaceUri == m_understood || namespaceUri == markupCompatibilityNamespace;
}

// Attributes of XML itself and of schema instances are forbidden whatever else is said of them (M1.21).
bool MarkupCompatibility::isIgnorable(std::string_view namespaceUri) const noexcept
{
    if (namespaceUri == xmlNamespace || namespaceUri == schemaInstanceNamespace)
        return false;
    return !isUnderstood(namespaceUri) &&
           std::find(m_ignorable.begin(), m_ignorable.end(), namespaceUri) != m_ignorable.end();
}

bool MarkupCompatibility::isDissolved(const XmlElement& element) const noexcept
{
    return std::any_of(m_dissolved.begin(), m_dissolved.end(), [&](const Name& name) {
        return name.namespaceUri == element.namespaceUri() && (name.name == "*" || name.name == element.name());
    });
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
