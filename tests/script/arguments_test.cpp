#include "script/arguments.h"

#include "kelvaris/system/system_error.h"
#include "tests/script/recorded_call.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris;
using namespace Kelvaris::System;
using Script::FuncCallFrame;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;

class Arguments : public testing::Test
{
protected:
    FuncCallFrame frame(std::vector<std::vector<const char*>> arguments)
    {
        args = RecordedArgs{std::move(arguments)};
        return {&args, &result, YRef<MessageHandler>{}};
    }

    RecordedArgs args;
    RecordedResult result;
};

TEST_F(Arguments, ASingleValueIsTheFirstText)
{
    EXPECT_EQ(Script::textArgument(frame({{"a"}, {"b", "ignored"}}), 1).toLegacyUtf8(), "b");
}

TEST_F(Arguments, ASingleValueWithoutATextIsOutOfRange)
{
    EXPECT_THAT([&] { Script::textArgument(frame({{}}), 0); },
                ThrowsMessage<std::out_of_range>("argument index out of range"));
    EXPECT_THAT([&] { Script::textArgument(frame({{"a"}}), 1); },
                ThrowsMessage<std::out_of_range>("argument index out of range"));
}

TEST_F(Arguments, TheTextsAreTakenBeforeTheirCountIsAsked)
{
    Script::textArgument(frame({{"a"}}), 0);
    EXPECT_THAT(args.asked, ElementsAre("strings 0", "count 0"));
}

TEST_F(Arguments, AnArrayIsAllTextsInOrder)
{
    std::vector<std::string> texts;
    for (const String& text : Script::textsArgument(frame({{"b", "", "a"}}), 0))
        texts.push_back(text.toLegacyUtf8());
    EXPECT_THAT(texts, ElementsAre("b", "", "a"));
}

TEST_F(Arguments, AnEmptyArrayIsNoErrorAndNoTextIsAskedFor)
{
    EXPECT_THAT(Script::textsArgument(frame({{}}), 0), IsEmpty());
    EXPECT_THAT(args.asked, ElementsAre("count 0"));
    EXPECT_THAT(Script::textsArgument(frame({}), 5), IsEmpty());
}

TEST_F(Arguments, AnOptionalTextThatIsMissingIsEmpty)
{
    EXPECT_EQ(Script::textArgumentOrEmpty(frame({}), 3).size(), 0U);
    EXPECT_THAT(args.asked, ElementsAre("count 3"));
    EXPECT_EQ(Script::textArgumentOrEmpty(frame({{"a", "b"}}), 0).toLegacyUtf8(), "a");
}

TEST_F(Arguments, AWindowsArgumentCountsOnlyAsExactlyOneText)
{
    EXPECT_FALSE(Script::oneTextArgument(frame({})).has_value());
    EXPECT_FALSE(Script::oneTextArgument(frame({{"a", "b"}})).has_value());
    EXPECT_EQ(Script::oneTextArgument(frame({{"a"}})).value().toLegacyUtf8(), "a");
}

TEST_F(Arguments, APathKeepsItsLetters)
{
    EXPECT_STREQ(Script::toFilePath2("höller/變 😀.kvsch").c_str(), L"höller/變 😀.kvsch");
}

TEST_F(Arguments, APathThatIsNoUtf8IsRefused)
{
    EXPECT_THROW(Script::toFilePath2("\xff"), SystemError);
}

} // namespace
