#include "host/core/opc/markup/xml_builder.h"

#include "host/core/opc/markup/xml_characters.h"

namespace Kelvaris::System::IO::OpcPackaging::Markup {

bool XmlBuilder::resolve(const char* begin, const char* end, bool isValue, std::string_view& resolved)
{
    std::string& text = m_data.resolved.emplace_front();
    for (m_at = begin; m_at != end;) {
        if (*m_at == '&') {
            if (!readReference(text))
                return false;
            continue;
        }
        const char character = *m_at++;
        if (character == '\r' && m_at != end && *m_at == '\n')
            continue;
        const bool isSpace = isXmlSpace(character);
        if (isSpace && isValue)
            text += ' ';
        else
            text += character == '\r' ? '\n' : character;
    }
    resolved = text;
    return true;
}

bool XmlBuilder::readReference(std::string& resolved)
{
    struct Entity
    {
        std::string_view reference;
        char character;
    };
    constexpr Entity entities[] = {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const auto& [reference, character] : entities) {
        if (!rest().starts_with(reference))
            continue;
        resolved += character;
        m_at += reference.size();
        return true;
    }
    // No reference that is allowed is longer, but for zeros in front.
    const std::size_t length = rest().substr(0, 64).find(';');
    if (length == std::string_view::npos || m_at[1] != '#')
        return fail("'&' that begins no reference, or an entity that is not declared");
    if (!readCharacterReference(rest().substr(2, length - 2), resolved))
        return fail("a character reference that XML does not allow");
    m_at += length + 1;
    return true;
}

bool XmlBuilder::readCharacterReference(std::string_view reference, std::string& resolved)
{
    const bool isHex = reference.starts_with('x');
    reference.remove_prefix(isHex ? 1 : 0);
    char32_t value = 0;
    for (const char character : reference) {
        const bool isDigit = character >= '0' && character <= '9';
        const char letter = static_cast<char>(character | 0x20);
        if (!isDigit && !(isHex && letter >= 'a' && letter <= 'f'))
            return false;
        value = value * (isHex ? 16 : 10) + static_cast<char32_t>(isDigit ? character - '0' : letter - 'a' + 10);
        if (value > 0x10FFFF)
            return false;
    }
    if (reference.empty() || !isXmlCharacter(value))
        return false;
    appendUtf8(resolved, value);
    return true;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
