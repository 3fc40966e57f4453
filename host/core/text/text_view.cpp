#include "host/core/text/text_view.h"

#include "host/core/errors/make_error.h"
#include "kelvaris/system/system_error.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>

namespace Kelvaris::System::Text {

namespace {

/// As much of a text as a message can show.
constexpr std::size_t shownLength = 100;

template <class Character>
[[noreturn]] void throwInvalidText(std::basic_string_view<Character> text)
{
    std::string shown = displayed(text.substr(0, shownLength));
    if (text.size() > shownLength)
        shown += "...";
    throw SystemError{Errors::makeError(CoreError::invalidText, shown)};
}

void appendHexadecimal(std::string& target, std::uint32_t value)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    int shift = 4;
    while (shift < 28 && (value >> (shift + 4)) != 0)
        shift += 4;
    target += "\\x";
    for (; shift >= 0; shift -= 4)
        target += digits[(value >> shift) & 0xF];
}

bool isBetween(std::uint32_t value, std::uint32_t first, std::uint32_t last)
{
    return first <= value && value <= last;
}

/// Control characters, line and paragraph separators, and the marks that turn the direction of the text after them.
bool disturbsLine(std::uint32_t character)
{
    return character < 0x20 || isBetween(character, 0x7F, 0x9F) || isBetween(character, 0x2028, 0x202E) ||
           isBetween(character, 0x2066, 0x2069);
}

void appendBytes(std::string& target, std::string_view bytes)
{
    for (const char byte : bytes)
        appendHexadecimal(target, static_cast<unsigned char>(byte));
}

void appendDisplayed(std::string& target, std::string_view valid)
{
    for (auto it = valid.begin(); it != valid.end();) {
        const auto begin = it;
        const std::uint32_t character = utf8::next(it, valid.end());
        const std::string_view bytes{begin, it};
        if (disturbsLine(character))
            appendBytes(target, bytes);
        else
            target += bytes;
    }
}

constexpr bool isAsciiUnit(wchar_t unit) noexcept
{
    return static_cast<std::uint32_t>(unit) < 0x80;
}

/// Of a text that says the same in any encoding; nearly every name and path does.
std::string narrowedAscii(std::wstring_view ascii)
{
    std::string narrowed(ascii.size(), '\0');
    std::ranges::transform(ascii, narrowed.begin(), [](wchar_t unit) { return static_cast<char>(unit); });
    return narrowed;
}

std::optional<std::string> validUtf8(std::wstring_view text)
{
    if (std::ranges::all_of(text, isAsciiUnit))
        return narrowedAscii(text);
    std::string narrowed;
    narrowed.reserve(text.size());
    try {
        if constexpr (sizeof(wchar_t) == sizeof(char16_t))
            utf8::utf16to8(text.begin(), text.end(), std::back_inserter(narrowed));
        else
            utf8::utf32to8(text.begin(), text.end(), std::back_inserter(narrowed));
    } catch (const utf8::exception&) {
        return std::nullopt;
    }
    return narrowed;
}

/// Takes one character, or one unit that is none, off `text`.
std::string takeDisplayed(std::wstring_view& text)
{
    // a character is one unit, or two where the platform has surrogates
    for (const std::size_t units : {std::size_t{1}, std::size_t{2}}) {
        if (const auto character = validUtf8(text.substr(0, units))) {
            text.remove_prefix(units);
            return displayed(*character);
        }
    }
    std::string shown;
    appendHexadecimal(shown, static_cast<std::uint32_t>(text.front()));
    text.remove_prefix(1);
    return shown;
}

constexpr char asciiLower(char letter) noexcept
{
    return 'A' <= letter && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

template <class Character>
constexpr bool isPlain(Character character) noexcept
{
    return ' ' <= character && character <= '~';
}

/// What `displayed` makes of any bytes.
void appendDisplayedBytes(std::string& target, std::string_view bytes)
{
    // nearly every name; thousands of examples are named for messages that never come
    if (std::ranges::all_of(bytes, isPlain<char>)) {
        target += bytes;
        return;
    }
    while (!bytes.empty()) {
        const auto invalid = utf8::find_invalid(bytes.begin(), bytes.end());
        const auto valid = static_cast<std::size_t>(invalid - bytes.begin());
        appendDisplayed(target, bytes.substr(0, valid));
        appendBytes(target, bytes.substr(valid, 1));
        bytes.remove_prefix(std::min(valid + 1, bytes.size()));
    }
}

constexpr bool isBlank(char8_t character) noexcept
{
    return character == u8' ' || character == u8'\t' || character == u8'\r' || character == u8'\n';
}

} // namespace

bool isValidUtf8(std::string_view text) noexcept
{
    return utf8::is_valid(text.begin(), text.end());
}

bool isAscii(std::string_view text) noexcept
{
    return std::ranges::all_of(text, [](char byte) { return (byte & 0x80) == 0; });
}

std::wstring toWide(std::string_view text)
{
    if (isAscii(text))
        return {text.begin(), text.end()};
    std::wstring wide;
    wide.reserve(text.size());
    try {
        if constexpr (sizeof(wchar_t) == sizeof(char16_t))
            utf8::utf8to16(text.begin(), text.end(), std::back_inserter(wide));
        else
            utf8::utf8to32(text.begin(), text.end(), std::back_inserter(wide));
    } catch (const utf8::exception&) {
        throwInvalidText(text);
    }
    return wide;
}

std::string toUtf8(std::wstring_view text)
{
    if (auto narrowed = validUtf8(text))
        return *std::move(narrowed);
    throwInvalidText(text);
}

std::string displayed(std::string_view text)
{
    std::string shown;
    appendDisplayedBytes(shown, text);
    return shown;
}

std::string displayed(std::wstring_view text)
{
    if (std::ranges::all_of(text, isPlain<wchar_t>))
        return narrowedAscii(text);
    std::string shown;
    while (!text.empty())
        shown += takeDisplayed(text);
    return shown;
}

std::string displayedIn(std::string_view place, std::string_view text)
{
    std::string shown;
    shown.reserve(place.size() + 2 + text.size());
    shown.append(place).append(": ");
    appendDisplayedBytes(shown, text);
    return shown;
}

bool equalsAsciiCase(std::string_view left, std::string_view right) noexcept
{
    // nearly always both are written alike
    return left.size() == right.size() &&
           (left == right || std::ranges::equal(left, right, {}, asciiLower, asciiLower));
}

bool endsWithAsciiCase(std::string_view text, std::string_view suffix) noexcept
{
    // the last letter alone tells most names from those that are looked for
    return text.size() >= suffix.size() && (suffix.empty() || asciiLower(text.back()) == asciiLower(suffix.back())) &&
           equalsAsciiCase(text.substr(text.size() - suffix.size()), suffix);
}

bool isAsciiLower(std::string_view text) noexcept
{
    return std::ranges::none_of(text, [](char character) { return character >= 'A' && character <= 'Z'; });
}

std::string toAsciiLower(std::string_view text)
{
    std::string lower{text};
    std::ranges::transform(lower, lower.begin(), asciiLower);
    return lower;
}

std::u8string_view trimmed(std::u8string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace Kelvaris::System::Text
