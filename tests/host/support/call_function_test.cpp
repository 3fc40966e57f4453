#include "host/support/call_function.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace Kelvaris;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

char* buffer(std::string_view text)
{
    char* copy = static_cast<char*>(::operator new(text.size() + 1));
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

/// Answers each argument as one line: its count and its texts.
FUNC_ERROR tellArguments(const FuncArgsMinimal& args, FuncResultMinimal* result, YRef<MessageHandler>)
{
    constexpr int shown = 3;
    char** places = result->allocateStrings(shown + 1);
    places[0] = buffer(std::to_string(args.argumentCount()));
    for (int index = 0; index < shown; ++index) {
        std::string line = std::to_string(args.count(index));
        for (std::int64_t text = 0; text < args.count(index); ++text)
            line += std::string{" "} + args.strings(index)[text];
        places[index + 1] = buffer(line);
    }
    return FUNC_OK;
}

FUNC_ERROR allocateTwiceAndFail(const FuncArgsMinimal&, FuncResultMinimal* result, YRef<MessageHandler>)
{
    result->allocateStrings(1)[0] = buffer("dropped");
    result->allocateStrings(2)[1] = buffer("kept");
    return FUNC_FAILED;
}

FUNC_ERROR postTwice(const FuncArgsMinimal&, FuncResultMinimal*, YRef<MessageHandler> messages)
{
    messages->post("one");
    messages->post("two");
    return FUNC_OK;
}

FUNC_ERROR allocateNothing(const FuncArgsMinimal&, FuncResultMinimal* result, YRef<MessageHandler>)
{
    result->allocateStrings(0);
    return FUNC_OK;
}

RegisteredFunction function(FuncEntry entry, int minimum = 0, int maximum = 3)
{
    return {"_f", minimum, maximum, {}, entry};
}

using Arguments = std::vector<std::vector<std::string>>;

TEST(CallFunction, PassesEachArgumentAsItsTexts)
{
    const auto call = callFunction(function(&tellArguments), {{"a", "", "Bühne"}, {}, {"c"}});
    EXPECT_THAT(call.results, ElementsAre("3", "3 a  Bühne", "0", "1 c"));
}

TEST(CallFunction, ArgumentsLeftOutAtTheEndHaveCountZero)
{
    const auto call = callFunction(function(&tellArguments), {{"a"}});
    EXPECT_THAT(call.results, ElementsAre("1", "1 a", "0", "0"));
}

TEST(CallFunction, GivesTheStatusAndWhatWasAllocatedLastAfterAFailureToo)
{
    const auto call = callFunction(function(&allocateTwiceAndFail), {});
    EXPECT_EQ(call.status, FUNC_FAILED);
    EXPECT_THAT(call.results, ElementsAre("", "kept")) << "a place that stays null reads as the empty text";
}

TEST(CallFunction, NoResultsAreNoTexts)
{
    const auto call = callFunction(function(&allocateNothing), {});
    EXPECT_EQ(call.status, FUNC_OK);
    EXPECT_THAT(call.results, IsEmpty());
}

TEST(CallFunction, CollectsWhatTheFunctionPosts)
{
    EXPECT_THAT(callFunction(function(&postTwice), {}).messages, ElementsAre("one", "two"));
}

TEST(CallFunction, RefusesFewerArgumentsThanTheMinimum)
{
    EXPECT_THAT([] { callFunction(function(&tellArguments, 2, 3), {{"a"}}); },
                ThrowsMessage<std::invalid_argument>("_f takes 2 to 3 arguments, not 1"));
}

TEST(CallFunction, RefusesMoreArgumentsThanTheMaximum)
{
    EXPECT_THAT(
        [] {
            callFunction(function(&tellArguments, 1, 1), {{"a"}, {"b"}});
        },
        ThrowsMessage<std::invalid_argument>("_f takes 1 argument, not 2"));
}

TEST(CallFunction, RefusesATextThatANulWouldCutOff)
{
    const Arguments arguments = {{"a"}, {"b", std::string{"c\0d", 3}}};
    EXPECT_THAT([&] { callFunction(function(&tellArguments), arguments); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("argument 2 of _f holds a NUL")));
}

} // namespace
