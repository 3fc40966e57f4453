#include "kelvaris/system/string_vector2.h"

#include <gtest/gtest.h>

#include <limits>
#include <system_error>
#include <utility>

using namespace Kelvaris::System;

namespace {

StringVector2 vectorOf(std::initializer_list<const char8_t*> texts)
{
    StringVector2 vector;
    for (const char8_t* text : texts)
        vector.push_back(text).value();
    return vector;
}

} // namespace

TEST(StringVector2, KeepsTextsInOrder)
{
    const StringVector2 texts = vectorOf({u8"b", u8"", u8"a"});
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts.data()[0], String2{u8"b"});
    EXPECT_EQ(texts.data()[1], String2{});
    EXPECT_EQ(texts.data()[2], String2{u8"a"});
}

TEST(StringVector2, JoinPutsTheSeparatorBetweenTexts)
{
    EXPECT_EQ(vectorOf({u8"-a", u8"größe", u8"c"}).join(u8' ').value(), String2{u8"-a größe c"});
}

TEST(StringVector2, JoinKeepsEmptyTexts)
{
    EXPECT_EQ(vectorOf({u8"", u8"a", u8""}).join(u8' ').value(), String2{u8" a "});
}

TEST(StringVector2, JoinOfNothingOrOneTextHasNoSeparator)
{
    EXPECT_EQ(vectorOf({}).join(u8' ').value(), String2{});
    EXPECT_EQ(vectorOf({u8"a"}).join(u8' ').value(), String2{u8"a"});
}

TEST(StringVector2, ReserveOfMoreThanThereIsAnswersNotEnoughMemory)
{
    StringVector2 texts = vectorOf({u8"a"});
    const auto reserved = texts.reserve(std::numeric_limits<std::size_t>::max());
    ASSERT_FALSE(reserved);
    EXPECT_EQ(reserved.error(), ErrorCodeEnumConstructor<std::errc>{}(std::errc::not_enough_memory));
    EXPECT_EQ(texts, vectorOf({u8"a"}));
}

TEST(StringVector2, ReserveChangesNoText)
{
    StringVector2 texts = vectorOf({u8"a"});
    texts.reserve(100).value();
    EXPECT_EQ(texts, vectorOf({u8"a"}));
}

TEST(StringVector2, MovedTextsStandInTheTarget)
{
    StringVector2 source = vectorOf({u8"a", u8"b"});
    const StringVector2 target{std::move(source)};
    EXPECT_EQ(target, vectorOf({u8"a", u8"b"}));
}
