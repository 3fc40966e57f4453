#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The characters of RFC 3986, none of which depends on a locale. Every name and target is looked at byte by byte, so
/// they stand in a table.
namespace Kelvaris::System::IO::OpcPackaging::Markup {

namespace detail {

enum UriClass : std::uint8_t { unreserved = 1, segment = 2, reference = 4 };

constexpr std::array<std::uint8_t, 256> uriClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    const auto add = [&classes](std::string_view characters, std::uint8_t added) {
        for (const char character : characters)
            classes[static_cast<unsigned char>(character)] |= added;
    };
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~", unreserved | segment | reference);
    add("!$&'()*+,;=:@", segment | reference);
    add("/?#[]", reference);
    return classes;
}();

constexpr bool isOfClass(char character, UriClass wanted) noexcept
{
    return (uriClasses[static_cast<unsigned char>(character)] & wanted) != 0;
}

} // namespace detail

constexpr bool isUnreserved(char character) noexcept
{
    return detail::isOfClass(character, detail::unreserved);
}

/// Those that a segment of a path may hold as they stand; "%" is none of them.
constexpr bool isSegmentCharacter(char character) noexcept
{
    return detail::isOfClass(character, detail::segment);
}

/// Those that a URI reference may hold somewhere as they stand; "%" is none of them.
constexpr bool isReferenceCharacter(char character) noexcept
{
    return detail::isOfClass(character, detail::reference);
}

/// The byte that two hexadecimal digits behind a "%" stand for; -1 when `text` does not begin with "%" and such two.
int percentDecoded(std::string_view text) noexcept;

void appendPercentEncoded(std::string& text, char byte);

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
