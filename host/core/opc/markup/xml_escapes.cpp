#include "host/core/opc/markup/xml_document.h"

#include <algorithm>

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

std::string escaped(std::string_view text, bool isAttribute)
{
    if (std::ranges::all_of(text, [&](char character) { return escapeOf(character, isAttribute).empty(); }))
        return std::string{text};
    std::string result;
    result.reserve(text.size() + text.size() / 16);
    for (const char character : text) {
        const std::string_view escape = escapeOf(character, isAttribute);
        if (escape.empty())
            result += character;
        else
            result += escape;
    }
    return result;
}

} // namespace

std::string escapedText(std::string_view text)
{
    return escaped(text, false);
}

std::string escapedAttribute(std::string_view text)
{
    return escaped(text, true);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
