#include "host/shell/function_call.h"

#include "host/shell/log_output.h"
#include "tests/host/shell/test_functions.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string refusal(const std::string& name, std::size_t count)
{
    return refusalOf(name, count).value_or("accepted");
}

} // namespace

TEST(FunctionCall, RefusesAnUnknownFunctionAndSuggestsCloseNames)
{
    const TestFunctions functions;
    EXPECT_EQ(refusal("test_jion", 1), "there is no function test_jion; did you mean test_join?");
    EXPECT_EQ(refusal("xyz", 1), "there is no function xyz");
}

TEST(FunctionCall, RefusesAWrongNumberOfArgumentsAndSaysHowMany)
{
    const TestFunctions functions;
    EXPECT_EQ(refusal("test_join", 0), "test_join takes 1 to 3 arguments; none was given");
    EXPECT_EQ(refusal("test_join", 1), "accepted");
    EXPECT_EQ(refusal("test_join", 3), "accepted");
    EXPECT_EQ(refusal("test_join", 4), "test_join takes 1 to 3 arguments; 4 were given");
    EXPECT_EQ(refusal("test_fail", 1), "test_fail takes no argument; 1 was given");
}

TEST(FunctionCall, GivesTheResultsInOrder)
{
    const TestFunctions functions;
    const CallOutcome outcome = callByName("test_join", {{"a", "b"}, {}, {"c"}});
    EXPECT_EQ(outcome.result.status, Kelvaris::FUNC_OK);
    EXPECT_THAT(outcome.result.results, ElementsAre("a+b", "", "c"));
    EXPECT_EQ(outcome.failure, "");
}

TEST(FunctionCall, KeepsTheLineThatTellsOfAFailureAndLeavesItInTheLog)
{
    const TestFunctions functions;
    const LogCapture log;
    const CallOutcome outcome = callByName("test_fail", {});
    EXPECT_EQ(outcome.result.status, Kelvaris::FUNC_FAILED);
    EXPECT_EQ(outcome.failure, "test_fail failed: on purpose");
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] test_fail failed: on purpose"));
}

TEST(FunctionCall, ShowsTheArityAsOneNumberOrARange)
{
    const TestFunctions functions;
    EXPECT_EQ(arityOf(*Kelvaris::FunctionRegistry::instance().find("test_join")), "1-3");
    EXPECT_EQ(arityOf(*Kelvaris::FunctionRegistry::instance().find("test_fail")), "0");
}
