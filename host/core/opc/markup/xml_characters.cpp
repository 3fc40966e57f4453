#include "host/core/opc/markup/xml_characters.h"

#include "host/core/opc/markup/xml_document.h"
#include "host/core/text/text_view.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace {

struct CodeRange
{
    char32_t first;
    char32_t last;
};

// XML 1.0, productions 4 and 4a, without what is ASCII.
constexpr CodeRange nameStartRanges[] = {
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D},
    {0x2070, 0x218F}, {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
constexpr CodeRange nameInnerRanges[] = {{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t N>
bool isIn(const CodeRange (&ranges)[N], char32_t character) noexcept
{
    return std::any_of(std::begin(ranges), std::end(ranges), [character](const CodeRange& range) {
        return character >= range.first && character <= range.last;
    });
}

enum : std::uint8_t { nameStart = 1, nameInner = 2 };

constexpr std::array<std::uint8_t, 128> asciiNames = [] {
    std::array<std::uint8_t, 128> classes{};
    for (char character = 'a'; character <= 'z'; ++character) {
        classes[static_cast<unsigned char>(character)] = nameStart | nameInner;
        classes[static_cast<unsigned char>(character) - std::size_t{'a' - 'A'}] = nameStart | nameInner;
    }
    for (char character = '0'; character <= '9'; ++character)
        classes[static_cast<unsigned char>(character)] = nameInner;
    classes['_'] = nameStart | nameInner;
    classes['-'] = nameInner;
    classes['.'] = nameInner;
    return classes;
}();

bool isWideNameCharacter(char32_t character, bool isFirst) noexcept
{
    return isIn(nameStartRanges, character) || (!isFirst && isIn(nameInnerRanges, character));
}

constexpr std::uint64_t everyByte(std::uint64_t byte)
{
    return byte * 0x0101010101010101U;
}

bool hasByteBelowBlank(std::uint64_t word) noexcept
{
    return ((word - everyByte(0x20)) & ~word & everyByte(0x80)) != 0;
}

bool isAllowedByte(char byte) noexcept
{
    return static_cast<unsigned char>(byte) >= 0x20 || isXmlSpace(byte);
}

// U+FFFE and U+FFFF are valid UTF-8, but no characters of XML.
std::optional<CharacterFault> nonCharacter(std::string_view text) noexcept
{
    for (std::size_t at = text.find("\xEF\xBF"); at != std::string_view::npos; at = text.find("\xEF\xBF", at + 1)) {
        if (at + 2 < text.size() && static_cast<unsigned char>(text[at + 2]) >= 0xBE)
            return CharacterFault{at, "a character that XML does not allow"};
    }
    return std::nullopt;
}

std::optional<CharacterFault> wideCharacterFault(std::string_view text) noexcept
{
    const auto invalid = utf8::find_invalid(text.begin(), text.end());
    if (invalid != text.end())
        return CharacterFault{static_cast<std::size_t>(invalid - text.begin()), "bytes that are not valid UTF-8"};
    return nonCharacter(text);
}

} // namespace

bool isXmlSpace(std::string_view text) noexcept
{
    return std::all_of(text.begin(), text.end(), [](char character) { return isXmlSpace(character); });
}

std::string_view trimmed(std::string_view text) noexcept
{
    while (!text.empty() && isXmlSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isXmlSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view takeWord(std::string_view& text) noexcept
{
    text = trimmed(text);
    const auto end = std::find_if(text.begin(), text.end(), [](char character) { return isXmlSpace(character); });
    const std::string_view word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(word.size());
    return word;
}

bool isXmlCharacter(char32_t character) noexcept
{
    if (character < 0x20)
        return character == 0x9 || character == 0xA || character == 0xD;
    if (character >= 0xD800 && character <= 0xDFFF)
        return false;
    return character <= 0x10FFFF && character != 0xFFFE && character != 0xFFFF;
}

// Eight bytes at a time: nearly all of them are plain ASCII.
std::optional<CharacterFault> characterFault(std::string_view text) noexcept
{
    constexpr const char* control = "a control character";
    std::uint64_t high = 0;
    std::size_t at = 0;
    for (std::uint64_t word = 0; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        high |= word & everyByte(0x80);
        if (!hasByteBelowBlank(word))
            continue;
        const std::string_view bytes = text.substr(at, sizeof word);
        const auto bad = std::find_if_not(bytes.begin(), bytes.end(), isAllowedByte);
        if (bad != bytes.end())
            return CharacterFault{at + static_cast<std::size_t>(bad - bytes.begin()), control};
    }
    for (; at < text.size(); ++at) {
        if (!isAllowedByte(text[at]))
            return CharacterFault{at, control};
        high |= static_cast<unsigned char>(text[at]) & 0x80U;
    }
    return high == 0 ? std::nullopt : wideCharacterFault(text);
}

std::size_t ncNameLength(std::string_view text) noexcept
{
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* at = begin;
    while (at != end) {
        const auto byte = static_cast<unsigned char>(*at);
        if (byte < 0x80) {
            if ((asciiNames[byte] & (at == begin ? nameStart : nameInner)) == 0)
                break;
            ++at;
            continue;
        }
        const char* next = at;
        if (!isWideNameCharacter(utf8::unchecked::next(next), at == begin))
            break;
        at = next;
    }
    return static_cast<std::size_t>(at - begin);
}

void appendUtf8(std::string& text, char32_t character)
{
    utf8::append(character, std::back_inserter(text));
}

bool isXmlText(std::string_view text) noexcept
{
    return !characterFault(text);
}

bool isNcName(std::string_view text) noexcept
{
    return !text.empty() && Text::isValidUtf8(text) && ncNameLength(text) == text.size();
}

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
