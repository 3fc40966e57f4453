#include "script/func_registration.h"

#include "host/support/call_function.h"
#include "host/support/function_registry.h"
#include "kelvaris/system/application.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/error_code2.h"
#include "script/results.h"
#include "tests/script/recorded_call.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris;
using namespace Kelvaris::System;
using Script::FuncCallFrame;
using Script::FuncRegistration;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* started = "diagnostic [script] function started: _f";

void setLogScriptCalls(bool log)
{
    Application::instance()->settings().setLogScriptCalls(log);
}

class FuncRegistrationCall : public testing::Test
{
protected:
    ~FuncRegistrationCall() override { setLogScriptCalls(false); }

    /// Registers `handler` as "_f" and calls it once.
    template <class HandlerType>
    CallResult call(HandlerType handler)
    {
        const FuncRegistration registration{"_f", {argTypeStringArray}, 0, 1, handler};
        return callFunction(*FunctionRegistry::instance().find("_f"), {});
    }

    LogCapture log;
};

class NotifyingHandler : public MessageHandler
{
public:
    explicit NotifyingHandler(bool& gone) : m_gone{gone} {}
    ~NotifyingHandler() override { m_gone = true; }

    void post(const char*) override {}

private:
    bool& m_gone;
};

TEST_F(FuncRegistrationCall, WithoutTheSettingASuccessfulCallLogsNothing)
{
    EXPECT_EQ(call([](FuncCallFrame) { return FUNC_OK; }).status, FUNC_OK);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(FuncRegistrationCall, WithoutTheSettingAFailingCallLogsOneErrorLine)
{
    const auto fail = [](FuncCallFrame) -> FUNC_ERROR { throw std::runtime_error{"no luck"}; };
    EXPECT_EQ(call(fail).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _f failed: no luck"));
}

TEST_F(FuncRegistrationCall, WithTheSettingASuccessfulCallLogsTwoEqualLines)
{
    setLogScriptCalls(true);
    call([](FuncCallFrame) { return FUNC_OK; });
    EXPECT_THAT(log.lines(), ElementsAre(started, started)) << "the end of a call has no wording of its own";
}

TEST_F(FuncRegistrationCall, WithTheSettingAFailingCallLogsOneDiagnosticLineAndOneErrorLine)
{
    setLogScriptCalls(true);
    call([](FuncCallFrame) -> FUNC_ERROR { throw std::runtime_error{"no luck"}; });
    EXPECT_THAT(log.lines(), ElementsAre(started, "error [script/function] _f failed: no luck"));
}

TEST_F(FuncRegistrationCall, TheSettingIsAskedAfreshAtTheEndOfTheCall)
{
    call([](FuncCallFrame) {
        setLogScriptCalls(true);
        Application::instance()->logger().error("test", "in the handler");
        return FUNC_OK;
    });
    EXPECT_THAT(log.lines(), ElementsAre("error [test] in the handler", started));
}

TEST_F(FuncRegistrationCall, AnExceptionOfAnUnrelatedTypeIsCaughtAndLogged)
{
    EXPECT_EQ(call([](FuncCallFrame) -> FUNC_ERROR { throw 42; }).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _f failed with unknown error"));
}

TEST_F(FuncRegistrationCall, TheMessageOfAnErrorCodeIsNotInTheLineOfItsBadAccess)
{
    call([](FuncCallFrame) -> FUNC_ERROR {
        throw bad_expected_access<ErrorCode2>{ErrorCode2{1, core_error_category()}};
    });
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _f failed: bad expected access"));
}

TEST_F(FuncRegistrationCall, GivesTheHostWhatTheHandlerReturns)
{
    EXPECT_EQ(call([](FuncCallFrame) { return static_cast<FUNC_ERROR>(7); }).status, static_cast<FUNC_ERROR>(7));
}

TEST_F(FuncRegistrationCall, ResultsFromBeforeTheExceptionStay)
{
    const auto result = call([](FuncCallFrame frame) -> FUNC_ERROR {
        Script::ResultArray results{frame, 2};
        results.append("first");
        throw std::runtime_error{"no luck"};
    });
    EXPECT_THAT(result.results, ElementsAre("first", ""));
}

TEST_F(FuncRegistrationCall, NothingIsPostedToTheMessageHandler)
{
    EXPECT_THAT(call([](FuncCallFrame) -> FUNC_ERROR { throw std::runtime_error{"no luck"}; }).messages, IsEmpty());
}

TEST_F(FuncRegistrationCall, TheMessageHandlerIsReleasedOnEveryWayOut)
{
    const FuncRegistration registration{"_f", {argTypeStringArray}, 0, 1, [](FuncCallFrame frame) {
                                            if (frame.args->count(0) > 0)
                                                throw std::runtime_error{"no luck"};
                                            return FUNC_OK;
                                        }};
    const FuncEntry entry = FunctionRegistry::instance().find("_f")->entry;
    for (const RecordedArgs& args : {RecordedArgs{}, RecordedArgs{{{"throw"}}}}) {
        RecordedResult result;
        bool gone = false;
        entry(args, &result, YRef<MessageHandler>{new NotifyingHandler{gone}});
        EXPECT_TRUE(gone);
    }
}

TEST(FuncRegistration, TheDeclarationArrayHasThirtyTwoEntriesEvenWithoutArguments)
{
    const FuncRegistration registration{"_none", {argTypeStringArray}, 0, 0, [](FuncCallFrame) { return FUNC_OK; }};

    const RegisteredFunction* function = FunctionRegistry::instance().find("_none");

    ASSERT_NE(function, nullptr);
    std::vector<argType> expected(32, argTypeNone);
    expected[0] = argTypeStringArray;
    EXPECT_EQ(function->arguments, expected);
    EXPECT_EQ(function->minimum, 0);
    EXPECT_EQ(function->maximum, 0);
}

TEST(FuncRegistration, EachHandlerHasItsOwnNameAndDeclaration)
{
    const FuncRegistration one{"_one", {argTypeStringArray}, 1, 1, [](FuncCallFrame) -> FUNC_ERROR { throw 1; }};
    const FuncRegistration two{
        "_two", {argTypeStringArray, argTypeStringArray}, 1, 2, [](FuncCallFrame) -> FUNC_ERROR { throw 2; }};
    const LogCapture log;
    const auto& registry = FunctionRegistry::instance();

    callFunction(*registry.find("_one"), {{"a"}});
    callFunction(*registry.find("_two"), {{"a"}});

    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _one failed with unknown error",
                                         "error [script/function] _two failed with unknown error"));
    EXPECT_EQ(registry.find("_one")->arguments[1], argTypeNone);
    EXPECT_EQ(registry.find("_two")->arguments[1], argTypeStringArray);
}

TEST(FuncRegistration, ANameThatIsTakenThrowsAndStaysWithTheFunctionThatHasIt)
{
    const FuncRegistration holder{"_taken", {argTypeStringArray}, 0, 1, [](FuncCallFrame) { return FUNC_OK; }};
    const auto late = [](FuncCallFrame) { return FUNC_FAILED; };
    EXPECT_THROW((FuncRegistration{"_taken", {argTypeStringArray, argTypeStringArray}, 0, 2, late}),
                 std::invalid_argument);
    const RegisteredFunction* const function = FunctionRegistry::instance().find("_taken");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(callFunction(*function, {}).status, FUNC_OK);
    EXPECT_EQ(function->maximum, 1);
}

TEST(FuncRegistration, TheFunctionGoesWithTheObject)
{
    {
        const FuncRegistration registration{"_gone", {argTypeStringArray}, 0, 0, [](FuncCallFrame) { return FUNC_OK; }};
        ASSERT_NE(FunctionRegistry::instance().find("_gone"), nullptr);
    }
    EXPECT_EQ(FunctionRegistry::instance().find("_gone"), nullptr);
}

} // namespace
