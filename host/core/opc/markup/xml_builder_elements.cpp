#include "host/core/opc/markup/xml_builder.h"

#include "host/core/opc/limits.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/rule_error.h"

#include <algorithm>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

constexpr std::string_view declarationsNamespace = "http://www.w3.org/2000/xmlns/";

} // namespace

void XmlBuilder::openElement(const char* begin, std::string_view writtenName, std::size_t prefixLength)
{
    const auto index = static_cast<std::uint32_t>(m_data.nodes.size());
    Node node;
    node.writtenName = writtenName;
    node.prefixLength = static_cast<std::uint32_t>(prefixLength);
    node.parent = m_open;
    node.begin = offsetOf(begin);
    node.firstAttribute = static_cast<std::uint32_t>(m_data.attributes.size());
    node.firstDeclaration = static_cast<std::uint32_t>(m_data.declarations.size());
    if (m_open != noIndex) {
        Node& parent = openNode();
        node.declarationsInForce = parent.declarationsInForce;
        if (parent.lastChild == noIndex)
            parent.firstChild = index;
        else
            m_data.nodes[parent.lastChild].nextSibling = index;
        parent.lastChild = index;
    }
    m_data.nodes.push_back(node);
    m_open = index;
    ++m_depth;
}

void XmlBuilder::closeElement(const char* endTag)
{
    openNode().endTag = offsetOf(endTag);
    openNode().end = offsetOf(m_at);
    m_open = openNode().parent;
    --m_depth;
}

void XmlBuilder::addText(std::string_view text)
{
    if (text.empty())
        return;
    const auto index = static_cast<std::uint32_t>(m_data.texts.size());
    Node& node = openNode();
    if (node.lastText == noIndex)
        node.firstText = index;
    else
        m_data.texts[node.lastText].next = index;
    node.lastText = index;
    m_data.texts.push_back({text, node.lastChild});
}

bool XmlBuilder::addAttribute(std::string_view writtenName, std::size_t prefixLength, std::string_view value)
{
    const std::string_view prefix = writtenName.substr(0, prefixLength == 0 ? 0 : prefixLength - 1);
    const std::string_view name = writtenName.substr(prefixLength);
    if (writtenName == "xmlns")
        return addDeclaration({}, value);
    if (prefix == "xmlns")
        return addDeclaration(name, value);
    if (++openNode().attributeCount > Limits::xmlAttributes)
        return failLimit("more than " + std::to_string(Limits::xmlAttributes) + " attributes on one element");
    m_data.attributes.push_back({{}, prefix, name, value});
    return true;
}

bool XmlBuilder::addDeclaration(std::string_view prefix, std::string_view uri)
{
    Node& node = openNode();
    if (++node.declarationsInForce > Limits::xmlNamespaces)
        return failLimit("more than " + std::to_string(Limits::xmlNamespaces) + " namespaces at one place");
    if (prefix == "xmlns" || uri == declarationsNamespace || (prefix == "xml") != (uri == xmlNamespace))
        return fail("a namespace declaration of 'xml' or 'xmlns' that is not allowed");
    if (!prefix.empty() && uri.empty())
        return fail("the namespace prefix " + inQuotes(prefix) + " is declared as nothing");
    const auto first = m_data.declarations.begin() + node.firstDeclaration;
    if (std::any_of(first, m_data.declarations.end(), [&](const auto& other) { return other.prefix == prefix; }))
        return fail("the namespace prefix " + inQuotes(prefix) + " is declared twice");
    ++node.declarationCount;
    m_data.declarations.push_back({prefix, uri});
    return true;
}

bool XmlBuilder::resolveNamespaces()
{
    Node& node = openNode();
    const std::string_view prefix = node.writtenName.substr(0, node.prefixLength == 0 ? 0 : node.prefixLength - 1);
    const auto uri = m_data.namespaceOf(m_open, prefix);
    if (!uri)
        return fail("the namespace prefix " + inQuotes(prefix) + " is not declared");
    node.namespaceUri = *uri;
    for (std::uint32_t i = 0; i < node.attributeCount; ++i) {
        XmlAttribute& attribute = m_data.attributes[node.firstAttribute + i];
        if (attribute.prefix.empty())
            continue;
        const auto attributeUri = m_data.namespaceOf(m_open, attribute.prefix);
        if (!attributeUri)
            return fail("the namespace prefix " + inQuotes(attribute.prefix) + " is not declared");
        attribute.namespaceUri = *attributeUri;
    }
    return checkAttributes();
}

bool XmlBuilder::checkAttributes()
{
    const auto last = m_data.attributes.end();
    for (auto one = m_data.attributes.begin() + openNode().firstAttribute; one != last; ++one) {
        const auto isSame = [&](const XmlAttribute& other) { return other.is(one->namespaceUri, one->name); };
        if (std::any_of(std::next(one), last, isSame))
            return fail("the attribute " + inQuotes(one->name) + " stands twice");
    }
    return true;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
