#include "host/shell/call_arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::vector<std::string> texts(const std::string& word)
{
    const auto argument = parseCallArgument(word);
    EXPECT_TRUE(argument.hasValue()) << (argument ? "" : argument.error().text);
    return argument ? *argument : std::vector<std::string>{};
}

std::string refusal(const std::string& word)
{
    const auto argument = parseCallArgument(word);
    return argument ? "accepted" : argument.error().text;
}

} // namespace

TEST(CallArguments, MakesAnArrayOfOneFromAText)
{
    EXPECT_THAT(texts("C:\\a\\b"), ElementsAre("C:\\a\\b"));
    EXPECT_THAT(texts(" [\"a\"]"), ElementsAre(" [\"a\"]"));
    EXPECT_THAT(texts("{\"a\":1}"), ElementsAre("{\"a\":1}"));
}

TEST(CallArguments, KeepsTheEmptyText)
{
    EXPECT_THAT(texts(""), ElementsAre(""));
}

TEST(CallArguments, ReadsAJsonArrayOfTexts)
{
    EXPECT_THAT(texts(R"(["a", "", "x;y", "\u00e4\n\"", "\ud83d\ude00"])"), ElementsAre("a", "", "x;y", "ä\n\"", "😀"));
}

TEST(CallArguments, ReadsTheEmptyArrayAsNoText)
{
    EXPECT_THAT(texts("[]"), IsEmpty());
}

TEST(CallArguments, ReadsATextThatBeginsWithABracketFromAnArray)
{
    EXPECT_THAT(texts(R"(["[draft] a"])"), ElementsAre("[draft] a"));
}

TEST(CallArguments, SaysWhereBrokenJsonIsBroken)
{
    EXPECT_THAT(refusal("["), HasSubstr("is no JSON array of texts: "));
    EXPECT_THAT(refusal(R"(["ä", x])"), testing::EndsWith("at character 7"));
}

TEST(CallArguments, RefusesTextBehindTheArray)
{
    EXPECT_THAT(refusal("[\"a\"] b"), HasSubstr("is no JSON array of texts: "));
}

TEST(CallArguments, RefusesElementsThatAreNoTexts)
{
    EXPECT_EQ(refusal("[\"a\", 2]"), "holds as element 2 a number where a text belongs");
    EXPECT_EQ(refusal("[null]"), "holds as element 1 null where a text belongs");
    EXPECT_EQ(refusal("[true]"), "holds as element 1 a truth value where a text belongs");
    EXPECT_EQ(refusal("[[\"a\"]]"), "holds as element 1 an array where a text belongs");
    EXPECT_EQ(refusal("[{}]"), "holds as element 1 an object where a text belongs");
}

TEST(CallArguments, RefusesTextsThatNoFunctionCanTake)
{
    EXPECT_EQ(refusal(R"(["a\u0000b"])"), "holds as element 1 a text with a NUL character");
    EXPECT_EQ(refusal(R"(["a", "\ud800"])"), "holds as element 2 a text with half a surrogate pair");
}
