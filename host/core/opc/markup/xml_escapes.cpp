#include "host/core/opc/markup/xml_document.h"

#include <algorithm>
#include <array>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

std::string_view escapeOf(char character, bool isAttribute)
{
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r':
        return "&#13;";
    case '"':
        return isAttribute ? "&quot;" : "";
    case '\n':
        return isAttribute ? "&#10;" : "";
    case '\t':
        return isAttribute ? "&#9;" : "";
    default:
        return "";
    }
}

/// Of an attribute; of these the content of an element leaves some alone.
constexpr std::array<bool, 256> escapedCharacters = [] {
    std::array<bool, 256> table{};
    for (const char character : std::string_view{"&<>\r\"\n\t"})
        table[static_cast<unsigned char>(character)] = true;
    return table;
}();

void appendEscaped(std::string& target, std::string_view text, bool isAttribute)
{
    while (true) {
        const auto plain = std::ranges::find_if(
            text, [](char character) { return escapedCharacters[static_cast<unsigned char>(character)]; });
        target.append(text.begin(), plain);
        if (plain == text.end())
            return;
        const std::string_view escape = escapeOf(*plain, isAttribute);
        if (escape.empty())
            target += *plain;
        else
            target += escape;
        text = {plain + 1, text.end()};
    }
}

} // namespace

std::string escapedText(std::string_view text)
{
    std::string result;
    appendEscaped(result, text, false);
    return result;
}

void appendEscapedAttribute(std::string& target, std::string_view text)
{
    appendEscaped(target, text, true);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
