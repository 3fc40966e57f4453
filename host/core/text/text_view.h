#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/string2.h"

#include <string>
#include <string_view>

/// Between the text classes of the contract and the standard library's. All 8-bit text is UTF-8.
namespace Kelvaris::System::Text {

/// Valid as long as `text` is unchanged.
inline std::u8string_view view(const String2& text) noexcept
{
    return {text.data(), text.length()};
}

/// The same bytes as `char`, for libraries that speak it.
inline std::string_view narrow(const String2& text) noexcept
{
    return {reinterpret_cast<const char*>(text.data()), text.length()};
}

inline std::string_view narrow(std::u8string_view text) noexcept
{
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

inline String2 toString2(std::u8string_view text)
{
    String2 copy;
    copy.assign(text.data(), text.size());
    return copy;
}

inline String2 toString2(std::string_view text)
{
    return toString2(std::u8string_view{reinterpret_cast<const char8_t*>(text.data()), text.size()});
}

KELVARIS_CORE_API bool isValidUtf8(std::string_view text) noexcept;

KELVARIS_CORE_API bool isAscii(std::string_view text) noexcept;

/// UTF-8 to the platform's wide text and back; checked.
/// @throws SystemError  with core 5
KELVARIS_CORE_API std::wstring toWide(std::string_view text);
KELVARIS_CORE_API std::string toUtf8(std::wstring_view text);

/// For messages: invalid bytes, control characters and what else breaks or turns a line are shown as "\xNN", so that
/// any name can be shown and none pretends to be another.
KELVARIS_CORE_API std::string displayed(std::string_view text);
KELVARIS_CORE_API std::string displayed(std::wstring_view text);

/// "place: text" for messages; only `text` needs to be made fit for display.
KELVARIS_CORE_API std::string displayedIn(std::string_view place, std::string_view text);

/// Equality and lower case of ASCII letters alone; `isAsciiLower`: nothing is left to be made lower; as part names and
/// extensions are compared.
KELVARIS_CORE_API bool equalsAsciiCase(std::string_view left, std::string_view right) noexcept;
KELVARIS_CORE_API bool endsWithAsciiCase(std::string_view text, std::string_view suffix) noexcept;
KELVARIS_CORE_API std::string toAsciiLower(std::string_view text);
KELVARIS_CORE_API bool isAsciiLower(std::string_view text) noexcept;

/// The text without the white space of XML at both ends.
KELVARIS_CORE_API std::u8string_view trimmed(std::u8string_view text) noexcept;

} // namespace Kelvaris::System::Text
