#include "kelvaris/system/string2.h"

#include "host/core/text/text_view.h"
#include "kelvaris/system/string_vector2.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

using namespace Kelvaris::System;

namespace {

using Texts = std::vector<std::string>;

Texts split(const char8_t* text, char8_t separator = u8';')
{
    const StringVector2 pieces = String2{text}.split(separator).value();
    Texts texts;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        texts.emplace_back(Text::narrow(pieces.data()[i]));
    return texts;
}

} // namespace

TEST(String2, IsEmptyAtFirstAndEndsInANul)
{
    EXPECT_EQ(String2{}.length(), 0u);
    EXPECT_EQ(String2{}.data()[0], u8'\0');
}

TEST(String2, LengthCountsBytes)
{
    EXPECT_EQ(String2{u8"日本"}.length(), 6u);
}

TEST(String2, AssignKeepsNulBytesAndGivesItself)
{
    String2 text{u8"before"};
    EXPECT_EQ(&text.assign(u8"a\0b", 3), &text);
    EXPECT_EQ(Text::narrow(text), (std::string_view{"a\0b", 3}));
}

TEST(String2, AssignTakesAPartOfItself)
{
    String2 text{u8"abcdef"};
    text.assign(text.data() + 2, 3);
    EXPECT_EQ(text, String2{u8"cde"});
}

TEST(String2, MovedTextStandsInTheTarget)
{
    String2 source{u8"a text that is too long for any small buffer"};
    String2 target;
    target = std::move(source);
    EXPECT_EQ(target, String2{u8"a text that is too long for any small buffer"});
}

TEST(String2, HasNoVirtualFunctions)
{
    static_assert(!std::is_polymorphic_v<String2>);
}

TEST(String2, SplitDropsBlanksAroundPiecesAndEmptyPieces)
{
    EXPECT_EQ(split(u8"alpha; beta gamma;"), (Texts{"alpha", "beta gamma"}));
    EXPECT_EQ(split(u8";;\ta \n;; ; b"), (Texts{"a", "b"}));
}

TEST(String2, SplitOfNothingGivesNothing)
{
    EXPECT_EQ(split(u8""), Texts{});
    EXPECT_EQ(split(u8" ; ;"), Texts{});
}

TEST(String2, SplitWithoutASeparatorGivesTheOneText)
{
    EXPECT_EQ(split(u8" größe 日本 "), (Texts{"größe 日本"}));
}

TEST(String2, SplitKeepsDoublesAndOrder)
{
    EXPECT_EQ(split(u8"b,a,b", u8','), (Texts{"b", "a", "b"}));
}
