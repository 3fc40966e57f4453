#include "host/core/opc/markup/xml_builder.h"

#include "host/core/opc/limits.h"
#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/xml_characters.h"

#include <algorithm>
#include <array>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

constexpr std::array<bool, 256> bytesOf(std::string_view wanted)
{
    std::array<bool, 256> table{};
    for (const char character : wanted)
        table[static_cast<unsigned char>(character)] = true;
    table[0] = true;
    return table;
}

constexpr auto endsText = bytesOf("<&]\r");
constexpr auto endsQuotedValue = bytesOf("\"<&\t\n\r");
constexpr auto endsApostropheValue = bytesOf("'<&\t\n\r");

const char* skipTo(const std::array<bool, 256>& table, const char* at) noexcept
{
    while (!table[static_cast<unsigned char>(*at)])
        ++at;
    return at;
}

bool isReserved(std::string_view target)
{
    return target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' && (target[2] | 0x20) == 'l';
}

} // namespace

XmlBuilder::XmlBuilder(XmlDocument::Data& data) noexcept
    : m_data{data}, m_begin{data.text.data()}, m_end{m_begin + data.text.size()}, m_at{m_begin}
{
}

XmlFault XmlBuilder::build(std::size_t begin)
{
    m_at = m_begin + begin;
    // As many as a document of the package layer has, so that a usual one takes one allocation for each list.
    const std::size_t guess = std::min<std::size_t>(m_data.text.size() / 64, 65536) + 4;
    m_data.nodes.reserve(guess);
    m_data.attributes.reserve(2 * guess);
    m_data.texts.reserve(guess);
    m_data.declarations.reserve(8);
    if (readAll()) {
        if (m_open != noIndex)
            fail("the element " + inQuotes(openNode().writtenName) + " is not closed");
        else if (m_data.nodes.empty())
            fail("there is no element");
    }
    return std::move(m_fault);
}

bool XmlBuilder::readAll()
{
    while (!isAtEnd()) {
        if (!(*m_at == '<' ? readMarkup() : readText()))
            return false;
        if (m_data.nodes.size() + m_data.attributes.size() + m_data.texts.size() > Limits::xmlPieces)
            return failLimit("more than " + std::to_string(Limits::xmlPieces) + " elements, attributes and texts");
    }
    return true;
}

bool XmlBuilder::readMarkup()
{
    switch (m_at[1]) {
    case '/':
        return readEndTag();
    case '?':
        return readProcessingInstruction();
    case '!':
        return readDeclared();
    default:
        return readStartTag();
    }
}

bool XmlBuilder::readDeclared()
{
    if (rest().starts_with("<!--"))
        return readComment();
    if (rest().starts_with("<!DOCTYPE"))
        return fail("a document type declaration", OpcError::documentTypeDeclared, "M1.18");
    if (rest().starts_with("<![CDATA[") && m_open != noIndex)
        return readCharacterData();
    return fail("'<!' that begins nothing that may stand here");
}

bool XmlBuilder::readComment()
{
    const std::size_t dashes = rest().find("--", 4);
    if (dashes == std::string_view::npos)
        return fail("a comment that is not closed");
    if (m_at[dashes + 2] != '>')
        return fail("'--' inside a comment");
    m_at += dashes + 3;
    return true;
}

bool XmlBuilder::readCharacterData()
{
    const std::size_t length = rest().find("]]>");
    if (length == std::string_view::npos)
        return fail("a CDATA section that is not closed");
    const char* const begin = m_at + 9;
    const char* const end = m_at + length;
    std::string_view text{begin, static_cast<std::size_t>(end - begin)};
    if (text.find('\r') != std::string_view::npos) {
        std::string& oneKind = m_data.resolved.emplace_front();
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '\r')
                oneKind += text[i];
            else if (i + 1 == text.size() || text[i + 1] != '\n')
                oneKind += '\n';
        }
        text = oneKind;
    }
    addText(text);
    m_at = end + 3;
    return true;
}

bool XmlBuilder::readProcessingInstruction()
{
    m_at += 2;
    const std::string_view target = rest().substr(0, ncNameLength(rest()));
    if (target.empty() || isReserved(target))
        return fail("a processing instruction without a name, or a second XML declaration");
    m_at += target.size();
    const std::size_t length = rest().find("?>");
    if (length == std::string_view::npos || (length != 0 && !isXmlSpace(*m_at)))
        return fail("a processing instruction that is not written as it must be");
    m_at += length + 2;
    return true;
}

bool XmlBuilder::readText()
{
    const char* const begin = m_at;
    bool isPlain = true;
    for (m_at = skipTo(endsText, m_at); *m_at != '<' && !isAtEnd(); m_at = skipTo(endsText, m_at + 1)) {
        if (*m_at != ']')
            isPlain = false;
        else if (rest().starts_with("]]>"))
            return fail("']]>' in text");
    }
    std::string_view text{begin, static_cast<std::size_t>(m_at - begin)};
    if (m_open == noIndex)
        return isXmlSpace(text) || fail("text outside the root element");
    if (!isPlain && !resolve(begin, m_at, false, text))
        return false;
    addText(text);
    return true;
}

bool XmlBuilder::readStartTag()
{
    const char* const begin = m_at;
    ++m_at;
    std::string_view name;
    std::size_t prefixLength = 0;
    if (!readQualifiedName(name, prefixLength))
        return false;
    if (m_open == noIndex && !m_data.nodes.empty())
        return fail("a second root element " + inQuotes(name));
    if (m_depth == Limits::xmlDepth)
        return failLimit("elements more than " + std::to_string(Limits::xmlDepth) + " deep");
    openElement(begin, name, prefixLength);
    if (!readAttributes() || !resolveNamespaces())
        return false;
    const bool isEmpty = *m_at == '/';
    m_at += isEmpty ? 2 : 1;
    if (isEmpty)
        closeElement(m_at);
    return true;
}

bool XmlBuilder::readAttributes()
{
    while (true) {
        const bool hasSpace = skipSpace();
        if (*m_at == '>' || rest().starts_with("/>"))
            return true;
        if (isAtEnd())
            return fail("a tag that is not closed");
        if (!hasSpace)
            return fail("no white space in front of an attribute");
        if (!readAttribute())
            return false;
    }
}

bool XmlBuilder::readAttribute()
{
    std::string_view name;
    std::size_t prefixLength = 0;
    if (!readQualifiedName(name, prefixLength))
        return false;
    skipSpace();
    if (*m_at != '=')
        return fail("the attribute " + inQuotes(name) + " has no value");
    ++m_at;
    skipSpace();
    std::string_view value;
    return readValue(value) && addAttribute(name, prefixLength, value);
}

bool XmlBuilder::readValue(std::string_view& value)
{
    const char quote = *m_at;
    if (quote != '"' && quote != '\'')
        return fail("the value of an attribute stands in no quotes");
    const auto& table = quote == '"' ? endsQuotedValue : endsApostropheValue;
    const char* const begin = ++m_at;
    bool isPlain = true;
    for (m_at = skipTo(table, m_at); *m_at != quote; m_at = skipTo(table, m_at + 1)) {
        if (isAtEnd())
            return fail("the value of an attribute is not closed");
        if (*m_at == '<')
            return fail("'<' in the value of an attribute");
        isPlain = false;
    }
    const char* const end = m_at;
    value = {begin, static_cast<std::size_t>(end - begin)};
    if (!isPlain && !resolve(begin, end, true, value))
        return false;
    m_at = end + 1;
    return true;
}

bool XmlBuilder::readEndTag()
{
    const char* const begin = m_at;
    m_at += 2;
    if (m_open == noIndex)
        return fail("an end tag without its element");
    const std::string_view name = openNode().writtenName;
    if (!rest().starts_with(name))
        return fail("an end tag where " + inQuotes(name) + " is to be closed");
    m_at += name.size();
    skipSpace();
    if (*m_at != '>')
        return fail("an end tag where " + inQuotes(name) + " is to be closed");
    ++m_at;
    closeElement(begin);
    return true;
}

bool XmlBuilder::readQualifiedName(std::string_view& written, std::size_t& prefixLength)
{
    const std::size_t first = ncNameLength(rest());
    if (first == 0)
        return fail("no name where one is wanted");
    written = rest().substr(0, first);
    if (m_at[first] == ':') {
        const std::size_t second = ncNameLength(rest().substr(first + 1));
        if (second == 0)
            return fail("no name behind the prefix " + inQuotes(written));
        prefixLength = first + 1;
        written = rest().substr(0, first + 1 + second);
    }
    m_at += written.size();
    return *m_at != ':' || fail("two colons in a name");
}

bool XmlBuilder::skipSpace()
{
    const char* const begin = m_at;
    while (isXmlSpace(*m_at))
        ++m_at;
    return m_at != begin;
}

bool XmlBuilder::fail(std::string what, OpcError error, std::string_view rule)
{
    m_fault = {error, rule, offsetOf(std::min(m_at, m_end)), std::move(what)};
    return false;
}

bool XmlBuilder::failLimit(std::string what)
{
    return fail(std::move(what), OpcError::limitExceeded, {});
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
