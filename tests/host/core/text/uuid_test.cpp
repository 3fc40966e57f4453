#include "kelvaris/system/uuid.h"

#include <gmock/gmock.h>

#include <set>

using namespace Kelvaris::System;

TEST(UUID, BothTextsAreTheSameBytes)
{
    const UUID identifier;
    EXPECT_EQ(identifier.toString().toLegacyUtf8(), identifier.toStdString());
    EXPECT_EQ(identifier.toString().size(), 36u);
}

TEST(UUID, TextIsARandomIdentifierInLowerCaseWithoutBraces)
{
    const auto isRandomIdentifier =
        testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    for (int i = 0; i < 100; ++i)
        EXPECT_THAT(UUID{}.toStdString(), isRandomIdentifier);
}

TEST(UUID, EachIsDifferentFromEveryOther)
{
    std::set<std::string> texts;
    for (int i = 0; i < 10'000; ++i)
        texts.insert(UUID{}.toStdString());
    EXPECT_EQ(texts.size(), 10'000u);
}

TEST(UUID, ACopyIsTheSameIdentifier)
{
    const UUID identifier;
    const UUID copy{identifier};
    EXPECT_EQ(copy.toStdString(), identifier.toStdString());
}
