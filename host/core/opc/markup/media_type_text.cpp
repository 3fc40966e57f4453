#include "host/core/opc/markup/media_type_text.h"

#include "host/core/opc/markup/rule_error.h"
#include "host/core/opc/markup/xml_characters.h"
#include "host/core/text/text_view.h"

#include <algorithm>
#include <array>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

constexpr std::array<bool, 256> tokenCharacters = [] {
    std::array<bool, 256> table{};
    for (std::size_t byte = 0x21; byte < 0x7F; ++byte)
        table[byte] = true;
    for (const char separator : std::string_view{"()<>@,;:\\\"/[]?={}"})
        table[static_cast<unsigned char>(separator)] = false;
    return table;
}();

bool isTokenCharacter(char character) noexcept
{
    return tokenCharacters[static_cast<unsigned char>(character)];
}

bool takeToken(std::string_view& rest) noexcept
{
    const auto end = std::find_if_not(rest.begin(), rest.end(), isTokenCharacter);
    const auto length = static_cast<std::size_t>(end - rest.begin());
    rest.remove_prefix(length);
    return length != 0;
}

bool takeCharacter(std::string_view& rest, char character) noexcept
{
    if (!rest.starts_with(character))
        return false;
    rest.remove_prefix(1);
    return true;
}

void skipBlanks(std::string_view& rest) noexcept
{
    while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t'))
        rest.remove_prefix(1);
}

bool takeQuotedText(std::string_view& rest) noexcept
{
    for (std::size_t i = 1; i < rest.size(); ++i) {
        const auto byte = static_cast<unsigned char>(rest[i]);
        if (byte == '"') {
            rest.remove_prefix(i + 1);
            return true;
        }
        if (byte == '\\')
            ++i;
        else if ((byte < 0x20 && byte != '\t') || byte == 0x7F)
            return false;
    }
    return false;
}

bool takeParameter(std::string_view& rest) noexcept
{
    if (!takeToken(rest) || !takeCharacter(rest, '='))
        return false;
    return rest.starts_with('"') ? takeQuotedText(rest) : takeToken(rest);
}

/// The standard keeps white space out of type, subtype, attribute and value; RFC 2616 lets it stand around ";".
bool takeParameters(std::string_view& rest) noexcept
{
    while (!rest.empty()) {
        skipBlanks(rest);
        if (!takeCharacter(rest, ';'))
            return false;
        skipBlanks(rest);
        if (!takeParameter(rest))
            return false;
    }
    return true;
}

std::string grammarFault(std::string_view text)
{
    if (text.find('(') < text.find('"'))
        return ruleReason("M1.15", inQuotes(text) + " holds a comment");
    if (text.empty() || text.find_first_of(" \t\r\n") == std::string_view::npos)
        return ruleReason("M1.13", inQuotes(text) + " is no media type");
    return ruleReason("M1.14", inQuotes(text) + " is no media type: it holds white space where none may stand");
}

bool isOwnType(std::string_view essence) noexcept
{
    constexpr std::string_view own = "application/vnd.openxmlformats-package.";
    return essence.size() > own.size() && Text::equalsAsciiCase(essence.substr(0, own.size()), own);
}

} // namespace

std::string mediaTypeFault(std::string_view text)
{
    if (!text.empty() && (isXmlSpace(text.front()) || isXmlSpace(text.back())))
        return ruleReason("M1.14", inQuotes(text) + " has white space around it");
    std::string_view rest = text;
    if (!takeToken(rest) || !takeCharacter(rest, '/') || !takeToken(rest))
        return grammarFault(text);
    const bool hasParameters = !rest.empty();
    if (!takeParameters(rest))
        return grammarFault(text);
    if (hasParameters && isOwnType(mediaTypeEssence(text)))
        return ruleReason("M1.22",
                          inQuotes(text) + " has parameters, which a media type of the standard must not have");
    return {};
}

std::string_view mediaTypeEssence(std::string_view text) noexcept
{
    std::string_view essence = text.substr(0, text.find(';'));
    while (!essence.empty() && isXmlSpace(essence.back()))
        essence.remove_suffix(1);
    return essence;
}

bool isSameMediaType(std::string_view left, std::string_view right) noexcept
{
    const std::string_view leftEssence = mediaTypeEssence(left);
    const std::string_view rightEssence = mediaTypeEssence(right);
    return Text::equalsAsciiCase(leftEssence, rightEssence) &&
           left.substr(leftEssence.size()) == right.substr(rightEssence.size());
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
