#include "host/core/opc/markup/xml_declaration.h"

#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/xml_characters.h"
#include "host/core/text/text_view.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

enum class Encoding { utf8, utf16Little, utf16Big };

XmlFault encodingFault(std::string what)
{
    return {.rule = "M1.17", .what = std::move(what)};
}

std::string_view asText(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// By the byte order mark, which is taken off, or by how the first "<" is stored (XML 1.0, appendix F).
Encoding takeEncoding(std::string_view& bytes)
{
    using namespace std::string_view_literals;
    constexpr std::string_view marks[] = {"\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv};
    constexpr Encoding encodings[] = {Encoding::utf8, Encoding::utf16Little, Encoding::utf16Big};
    for (std::size_t i = 0; i < std::size(marks); ++i) {
        if (!bytes.starts_with(marks[i]))
            continue;
        bytes.remove_prefix(marks[i].size());
        return encodings[i];
    }
    if (bytes.starts_with("<\0"sv))
        return Encoding::utf16Little;
    return bytes.starts_with("\0<"sv) ? Encoding::utf16Big : Encoding::utf8;
}

XmlFault decodeUtf16(std::string_view bytes, Encoding encoding, std::string& text)
{
    if (bytes.size() % 2 != 0)
        return encodingFault("UTF-16 with an odd number of bytes");
    std::u16string units(bytes.size() / 2, u'\0');
    const std::size_t high = encoding == Encoding::utf16Big ? 0 : 1;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto upper = static_cast<unsigned char>(bytes[2 * i + high]);
        const auto lower = static_cast<unsigned char>(bytes[2 * i + 1 - high]);
        units[i] = static_cast<char16_t>(upper << 8U | lower);
    }
    try {
        utf8::utf16to8(units.begin(), units.end(), std::back_inserter(text));
    } catch (const utf8::exception&) {
        return encodingFault("text that is not valid UTF-16");
    }
    return {};
}

/// The declaration in pieces: "<?xml version='1.0' encoding='UTF-8' standalone='yes'?>".
class DeclarationReader
{
public:
    explicit DeclarationReader(std::string_view text) : m_text{text}, m_at{5} {}

    XmlFault read()
    {
        if (pseudoAttribute("version") != "1.0")
            return {.position = m_at, .what = "the XML declaration does not begin with version=\"1.0\""};
        m_encoding = pseudoAttribute("encoding");
        if (const auto standalone = pseudoAttribute("standalone"); !isStandalone(standalone))
            return {.position = m_at, .what = "'standalone' of the XML declaration is neither 'yes' nor 'no'"};
        skipSpace();
        if (!m_text.substr(m_at).starts_with("?>"))
            return {.position = m_at, .what = "the XML declaration is not closed as it must be"};
        m_at += 2;
        return {};
    }

    std::optional<std::string_view> encoding() const { return m_encoding; }
    std::size_t end() const { return m_at; }

private:
    static bool isStandalone(std::optional<std::string_view> value)
    {
        return !value || *value == "yes" || *value == "no";
    }

    bool skipSpace()
    {
        const std::size_t begin = m_at;
        while (m_at < m_text.size() && isXmlSpace(m_text[m_at]))
            ++m_at;
        return m_at != begin;
    }

    /// Stays where it is when the attribute does not come next.
    std::optional<std::string_view> pseudoAttribute(std::string_view name)
    {
        const std::size_t begin = m_at;
        if (skipSpace() && m_text.substr(m_at).starts_with(name)) {
            m_at += name.size();
            skipSpace();
            if (m_at < m_text.size() && m_text[m_at] == '=') {
                ++m_at;
                skipSpace();
                if (const auto value = quotedValue())
                    return value;
            }
        }
        m_at = begin;
        return std::nullopt;
    }

    std::optional<std::string_view> quotedValue()
    {
        if (m_at >= m_text.size() || (m_text[m_at] != '"' && m_text[m_at] != '\''))
            return std::nullopt;
        const std::size_t end = m_text.find(m_text[m_at], m_at + 1);
        if (end == std::string_view::npos)
            return std::nullopt;
        const std::string_view value = m_text.substr(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        return value;
    }

    std::string_view m_text;
    std::size_t m_at;
    std::optional<std::string_view> m_encoding;
};

bool hasDeclaration(std::string_view text)
{
    return text.size() > 5 && text.starts_with("<?xml") && isXmlSpace(text[5]);
}

XmlFault readDeclaration(std::string& text, Encoding encoding, std::size_t& bodyBegin)
{
    bodyBegin = 0;
    if (!hasDeclaration(text))
        return {};
    DeclarationReader reader{text};
    if (XmlFault fault = reader.read(); !fault.isNone())
        return fault;
    bodyBegin = reader.end();
    if (!reader.encoding())
        return {};
    const bool isUtf8 = encoding == Encoding::utf8;
    if (!Text::equalsAsciiCase(*reader.encoding(), isUtf8 ? "UTF-8" : "UTF-16"))
        return encodingFault("the encoding " + inQuotes(*reader.encoding()) + " is declared, but " +
                             (isUtf8 ? "only UTF-8 and UTF-16 are allowed, and it is not UTF-16" : "it is UTF-16"));
    if (!isUtf8) {
        text.replace(static_cast<std::size_t>(reader.encoding()->data() - text.data()), 6, "UTF-8");
        --bodyBegin;
    }
    return {};
}

} // namespace

XmlFault readXmlText(std::span<const std::byte> bytes, std::string& text, std::size_t& bodyBegin)
{
    std::string_view input = asText(bytes);
    const Encoding encoding = takeEncoding(input);
    if (encoding == Encoding::utf8) {
        text = input;
    } else if (XmlFault fault = decodeUtf16(input, encoding, text); !fault.isNone()) {
        return fault;
    }
    // The encoding first: it is the better explanation of bytes that are no UTF-8.
    if (XmlFault fault = readDeclaration(text, encoding, bodyBegin); !fault.isNone())
        return fault;
    if (const auto fault = characterFault(text))
        return {.position = fault->position, .what = fault->what};
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
