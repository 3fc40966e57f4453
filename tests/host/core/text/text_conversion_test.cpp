#include "kelvaris/system/text_conversion.h"

#include "host/core/text/text_view.h"
#include "kelvaris/system/core_error.h"

#include <gtest/gtest.h>

#include <string>

using namespace Kelvaris::System;

namespace {

const ErrorCode2 invalidText{static_cast<int>(CoreError::invalidText), core_error_category()};

StringView2 viewOf(std::u8string_view text)
{
    return {text.data(), text.size()};
}

/// UTF-8 that no decoder may take, each for another reason.
const std::u8string invalidTexts[] = {
    {static_cast<char8_t>(0x80)},                                                                  // a lone trail
    {u8'a', static_cast<char8_t>(0xC3)},                                                           // cut short
    {static_cast<char8_t>(0xC0), static_cast<char8_t>(0xAF)},                                      // too long a form
    {static_cast<char8_t>(0xED), static_cast<char8_t>(0xA0), static_cast<char8_t>(0x80)},          // a surrogate
    {static_cast<char8_t>(0xF4), static_cast<char8_t>(0x90), char8_t{0x80 & 0xFF}, char8_t{0x80}}, // beyond Unicode
    {static_cast<char8_t>(0xFF)},                                                                  // no lead
};

} // namespace

TEST(TextConversion, WideTextBecomesUtf8)
{
    EXPECT_EQ(utf16ToUtf8(L"zö日😀").value(), String2{u8"zö日😀"});
    EXPECT_EQ(utf16ToUtf8(L"").value(), String2{});
}

TEST(TextConversion, HalvesOfSurrogatePairsAreInvalid)
{
    for (const wchar_t half : {static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0xDBFF), static_cast<wchar_t>(0xDC00),
                               static_cast<wchar_t>(0xDFFF)}) {
        const wchar_t text[] = {L'a', half, L'b', L'\0'};
        const auto converted = utf16ToUtf8(text);
        ASSERT_FALSE(converted);
        EXPECT_EQ(converted.error(), invalidText);
    }
}

TEST(TextConversion, WideUnitsBeyondUnicodeAreInvalid)
{
    if constexpr (sizeof(wchar_t) > 2) {
        for (const auto unit : {0x110000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
            const wchar_t text[] = {static_cast<wchar_t>(unit), L'\0'};
            EXPECT_EQ(utf16ToUtf8(text).error(), invalidText) << unit;
        }
    }
}

TEST(TextConversion, LengthCountsWideUnitsWithoutATerminator)
{
    EXPECT_EQ(detail::_utf16LengthRequired(viewOf(u8"")).value(), 0u);
    EXPECT_EQ(detail::_utf16LengthRequired(viewOf(u8"zö日")).value(), 3u);
    EXPECT_EQ(detail::_utf16LengthRequired(viewOf(u8"😀")).value(), std::wstring{L"😀"}.size());
}

TEST(TextConversion, WritesAsManyUnitsAsTheLengthAndNoTerminator)
{
    std::wstring target(4, L'x');
    detail::_toUtf16(target.data(), 3, viewOf(u8"zö日")).value();
    EXPECT_EQ(target, L"zö日x");
}

TEST(TextConversion, KeepsNulsOfTheText)
{
    const std::u8string text{u8"a\0b", 3};
    std::wstring target(3, L'x');
    EXPECT_EQ(detail::_utf16LengthRequired(viewOf(text)).value(), 3u);
    detail::_toUtf16(target.data(), 3, viewOf(text)).value();
    EXPECT_EQ(target, (std::wstring{L"a\0b", 3}));
}

TEST(TextConversion, NoncharactersPass)
{
    EXPECT_EQ(utf16ToUtf8(L"\uFFFF").value(), String2{u8"\uFFFF"});
    EXPECT_EQ(detail::_utf16LengthRequired(viewOf(u8"\uFFFE")).value(), 1u);
}

TEST(TextConversion, InvalidUtf8IsInvalidText)
{
    for (const std::u8string& text : invalidTexts) {
        EXPECT_EQ(detail::_utf16LengthRequired(viewOf(text)).error(), invalidText)
            << Text::displayed(Text::narrow(text));
        std::wstring target(8, L'x');
        EXPECT_EQ(detail::_toUtf16(target.data(), text.size(), viewOf(text)).error(), invalidText);
    }
}

TEST(TextConversion, AnotherLengthIsRefusedAndNothingIsWrittenBehindIt)
{
    std::wstring target(4, L'x');
    EXPECT_EQ(detail::_toUtf16(target.data(), 2, viewOf(u8"abc")).error(), invalidText);
    EXPECT_EQ(detail::_toUtf16(target.data(), 4, viewOf(u8"abc")).error(), invalidText);
    EXPECT_EQ(target.substr(2), L"xx");
}
