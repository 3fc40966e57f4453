#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Which characters XML 1.0 (5th edition) allows where.
namespace Kelvaris::System::IO::OpcPackaging::Markup {

inline bool isXmlSpace(char character) noexcept
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

/// Whether there is nothing but white space in `text`.
bool isXmlSpace(std::string_view text) noexcept;

/// `text` without the white space around it.
std::string_view trimmed(std::string_view text) noexcept;

/// The next piece between white space, taken from the front of `text`; empty at its end.
std::string_view takeWord(std::string_view& text) noexcept;

/// Whether XML can hold the character, be it by reference.
bool isXmlCharacter(char32_t character) noexcept;

/// What is wrong with `text` as UTF-8 of such characters, and where; nothing when it is fine.
struct CharacterFault
{
    std::size_t position;
    const char* what;
};
std::optional<CharacterFault> characterFault(std::string_view text) noexcept;

/// The bytes of the name without a colon that `text`, which is valid UTF-8, begins with; 0 for none.
std::size_t ncNameLength(std::string_view text) noexcept;

void appendUtf8(std::string& text, char32_t character);

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
