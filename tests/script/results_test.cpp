#include "script/results.h"

#include "tests/script/recorded_call.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace Kelvaris;
using Script::FuncCallFrame;
using testing::ElementsAre;
using testing::StrEq;
using testing::ThrowsMessage;

class Results : public testing::Test
{
protected:
    RecordedArgs args;
    RecordedResult result;
    FuncCallFrame frame{&args, &result, YRef<MessageHandler>{}};
};

TEST_F(Results, OneResultIsAllocatedAndTerminated)
{
    Script::writeResult(frame, "Größe");
    EXPECT_THAT(result.allocated, ElementsAre(1));
    EXPECT_THAT(result.places, ElementsAre(StrEq("Größe"))) << "bytes are counted, not characters";
}

TEST_F(Results, TheEmptyTextIsAResultToo)
{
    Script::writeResult(frame, "");
    EXPECT_THAT(result.places, ElementsAre(StrEq("")));
}

TEST_F(Results, AnArrayIsAllocatedOnceAndFilledInOrder)
{
    Script::ResultArray results{frame, 2};
    results.append("b");
    results.append("a");
    EXPECT_THAT(result.allocated, ElementsAre(2));
    EXPECT_THAT(result.places, ElementsAre(StrEq("b"), StrEq("a")));
}

TEST_F(Results, AnArrayOfNoneIsAllocatedToo)
{
    const Script::ResultArray results{frame, 0};
    EXPECT_THAT(result.allocated, ElementsAre(0));
}

TEST_F(Results, OneResultTooManyIsOutOfRange)
{
    Script::ResultArray results{frame, 1};
    results.append("a");
    EXPECT_THAT([&] { results.append("b"); }, ThrowsMessage<std::out_of_range>("result index out of range"));
    EXPECT_THAT(result.places, ElementsAre(StrEq("a")));
}

} // namespace
