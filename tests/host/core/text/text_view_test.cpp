#include "host/core/text/text_view.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;

TEST(Displayed, ShowsOrdinaryTextAsItIs)
{
    EXPECT_EQ(Text::displayed(std::string_view{"größe 日本 😀 \\ \"%\""}), "größe 日本 😀 \\ \"%\"");
    EXPECT_EQ(Text::displayed(std::wstring_view{L"größe 日本 😀"}), "größe 日本 😀");
}

TEST(Displayed, ShowsControlCharactersByTheirBytes)
{
    EXPECT_EQ(Text::displayed(std::string_view{"a\nb\r\x1B[0m\x7F"}), "a\\x0Ab\\x0D\\x1B[0m\\x7F");
    EXPECT_EQ(Text::displayed(std::string_view{"a\0b", 3}), "a\\x00b");
    EXPECT_EQ(Text::displayed(std::string_view{"\u0085"}), "\\xC2\\x85");
}

TEST(Displayed, ShowsWhatBreaksOrTurnsALineByItsBytes)
{
    EXPECT_EQ(Text::displayed(std::string_view{"a\u2028b"}), "a\\xE2\\x80\\xA8b");
    EXPECT_EQ(Text::displayed(std::string_view{"gpj\u202Etxt"}), "gpj\\xE2\\x80\\xAEtxt");
    EXPECT_EQ(Text::displayed(std::string_view{"\u2066"}), "\\xE2\\x81\\xA6");
}

TEST(Displayed, ShowsInvalidBytesByThemselves)
{
    EXPECT_EQ(Text::displayed(std::string_view{"a\xFF\xC3z\xE6\x97"}), "a\\xFF\\xC3z\\xE6\\x97");
}

TEST(Displayed, ShowsWideUnitsThatAreNoCharacters)
{
    const wchar_t text[] = {static_cast<wchar_t>(0xDC00), L'ö', static_cast<wchar_t>(0xD8FF)};
    EXPECT_EQ(Text::displayed(std::wstring_view{text, 3}), "\\xDC00ö\\xD8FF");
    if constexpr (sizeof(wchar_t) > 2) {
        const wchar_t beyond[] = {L'a', static_cast<wchar_t>(0x110000)};
        EXPECT_EQ(Text::displayed(std::wstring_view{beyond, 2}), "a\\x110000");
        const wchar_t largest[] = {static_cast<wchar_t>(0xFFFFFFFF), L'a'};
        EXPECT_EQ(Text::displayed(std::wstring_view{largest, 2}), "\\xFFFFFFFFa");
    }
}

TEST(Displayed, ShowsNothingForNothing)
{
    EXPECT_EQ(Text::displayed(std::string_view{}), "");
    EXPECT_EQ(Text::displayed(std::wstring_view{}), "");
}

TEST(ValidUtf8, TakesAllOfUnicodeAndNothingElse)
{
    EXPECT_TRUE(Text::isValidUtf8(""));
    EXPECT_TRUE(Text::isValidUtf8("zö日😀\uFFFF"));
    EXPECT_FALSE(Text::isValidUtf8("\xC3"));
    EXPECT_FALSE(Text::isValidUtf8("\xED\xA0\x80"));
}

TEST(AsciiCase, FoldsAsciiLettersAlone)
{
    EXPECT_TRUE(Text::equalsAsciiCase("/Content/A.KVSCH", "/cONTENT/a.kvsch"));
    EXPECT_FALSE(Text::equalsAsciiCase("Ö", "ö"));
    EXPECT_FALSE(Text::equalsAsciiCase("a", "ab"));
    EXPECT_FALSE(Text::equalsAsciiCase("@[`{", "`{@["));
    EXPECT_EQ(Text::toAsciiLower("ÄBC-[Z]"), "Äbc-[z]");
}

TEST(Trimmed, DropsWhiteSpaceAtBothEndsOnly)
{
    EXPECT_EQ(Text::trimmed(u8" \t\r\na b\n "), u8"a b");
    EXPECT_EQ(Text::trimmed(u8" \n "), u8"");
    EXPECT_EQ(Text::trimmed(u8"\u00A0"), u8"\u00A0");
}
