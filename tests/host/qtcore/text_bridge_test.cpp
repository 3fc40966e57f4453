#include "kelvaris/system/qt/text_bridge.h"

#include "kelvaris/system/core_error.h"

#include <gtest/gtest.h>

#include <string>

using namespace Kelvaris::System;

namespace {

const ErrorCode2 invalidText{static_cast<int>(CoreError::invalidText), core_error_category()};

String2 textOf(std::string_view bytes)
{
    String2 text;
    text.assign(reinterpret_cast<const char8_t*>(bytes.data()), bytes.size());
    return text;
}

QString fromUnits(std::initializer_list<char16_t> units)
{
    QString text;
    for (const char16_t unit : units)
        text += QChar{unit};
    return text;
}

void expectBothWays(std::string_view utf8, const QString& text)
{
    EXPECT_EQ(qStringToUTF8(text).value(), textOf(utf8));
    EXPECT_EQ(utf8ToQString(textOf(utf8)).value(), text);
}

} // namespace

TEST(TextBridge, CarriesTextBothWays)
{
    expectBothWays("größe 日本 😀", QStringLiteral("größe 日本 😀"));
    expectBothWays("", QString{});
}

TEST(TextBridge, CarriesNulsAndWhatStandsBehindThem)
{
    expectBothWays({"a\0b", 3}, fromUnits({u'a', u'\0', u'b'}));
}

TEST(TextBridge, CarriesNoncharacters)
{
    expectBothWays("\uFFFE\uFFFF\uFDD0", fromUnits({0xFFFE, 0xFFFF, 0xFDD0}));
}

TEST(TextBridge, KeepsAByteOrderMarkWhichIsACharacterInsideAText)
{
    expectBothWays("\uFEFFa", fromUnits({0xFEFF, u'a'}));
}

TEST(TextBridge, HalvesOfSurrogatePairsAreInvalidText)
{
    for (const QString& text : {fromUnits({0xD83D}), fromUnits({0xDE00}), fromUnits({u'a', 0xD83D, u'b'}),
                                fromUnits({0xDE00, 0xD83D}), fromUnits({0xD83D, 0xD83D, 0xDE00})}) {
        const auto converted = qStringToUTF8(text);
        ASSERT_FALSE(converted);
        EXPECT_EQ(converted.error(), invalidText);
    }
}

TEST(TextBridge, InvalidUtf8IsInvalidText)
{
    for (const std::string_view bytes : {"\xFF", "a\xC3", "\x80", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        const auto converted = utf8ToQString(textOf(bytes));
        ASSERT_FALSE(converted);
        EXPECT_EQ(converted.error(), invalidText);
    }
}

TEST(TextBridge, ErrorsTellThePlace)
{
    EXPECT_EQ(qStringToUTF8(fromUnits({u'ö', 0xD83D})).error().message(),
              String2{u8"not valid Unicode text: half a surrogate pair behind 2 valid bytes; write the text in UTF-8"});
    EXPECT_EQ(utf8ToQString(textOf("ö\xFF")).error().message(),
              String2{u8"not valid Unicode text: byte 3 begins no UTF-8 character; write the text in UTF-8"});
}
