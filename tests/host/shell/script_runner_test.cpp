#include "host/shell/script_runner.h"

#include "tests/host/shell/test_functions.h"

#include <QtCore/QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using namespace HostShell;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ScriptRunnerTest : public testing::Test
{
protected:
    ScriptEnd run(const char* script, const std::vector<std::string>& arguments = {})
    {
        return m_runner.run(QString::fromUtf8(script), QStringLiteral("dir/script.js"), arguments);
    }

    std::string errorOf(const char* script)
    {
        const ScriptEnd end = run(script);
        EXPECT_EQ(end.status, end.error.isEmpty() ? 0 : 1);
        return end.error.toStdString();
    }

    const std::vector<std::string>& printed() const { return m_printed; }

private:
    TestFunctions m_functions;
    std::vector<std::string> m_printed;
    ScriptRunner m_runner{[this](const QString& line) { m_printed.push_back(line.toStdString()); }};
};

} // namespace

TEST_F(ScriptRunnerTest, GivesFunctionsTextsAndArraysOfTexts)
{
    run("print(test_join('a', ['b', 'c'], [])[1])");
    EXPECT_THAT(printed(), ElementsAre("b+c"));
}

TEST_F(ScriptRunnerTest, IsStoppedFromAnotherThreadWhateverTheScriptCatches)
{
    std::thread other;
    ScriptRunner runner{[&](const QString&) {
        if (!other.joinable())
            other = std::thread{[&] { runner.stop(); }};
    }};
    const ScriptEnd end =
        runner.run(QStringLiteral("for (;;) { try { print('x') } catch (e) {} finally { continue } }"), {}, {});
    other.join();
    EXPECT_TRUE(end.stopped);
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.error, QString{});
}

TEST_F(ScriptRunnerTest, StopsTheNextScriptWhenNoneRunsAndOnlyThatOne)
{
    ScriptRunner runner{[](const QString&) {}};
    runner.stop();
    EXPECT_TRUE(runner.run(QStringLiteral("for (;;) ;"), {}, {}).stopped);
    EXPECT_FALSE(runner.run(QStringLiteral("1"), {}, {}).stopped);
}

TEST_F(ScriptRunnerTest, GivesBackATrueArrayOfTexts)
{
    run("var r = test_results(); print(Array.isArray(r), r.length, typeof r[0]); print(r[0]); print(r.map(x => "
        "x.length))");
    EXPECT_THAT(printed(), ElementsAre("true 2 string", "ä😀", "3,9"));
}

TEST_F(ScriptRunnerTest, TakesResultsOfOneFunctionAsAnArgumentOfAnother)
{
    run("print(test_join(test_join('a', 'b'))[0])");
    EXPECT_THAT(printed(), ElementsAre("a+b"));
}

TEST_F(ScriptRunnerTest, ThrowsTheLogLineWhenACallFails)
{
    run("try { test_fail() } catch (e) { print(e instanceof Error, e.message) }");
    EXPECT_THAT(printed(), ElementsAre("true test_fail failed: on purpose"));
}

TEST_F(ScriptRunnerTest, ReportsAnUncaughtFailureAtTheLineOfTheCall)
{
    EXPECT_EQ(errorOf("var a = 1;\nfunction f() {\n  test_fail();\n}\nf();\n"),
              "dir/script.js:3: Error: test_fail failed: on purpose");
}

TEST_F(ScriptRunnerTest, ReportsAnUncaughtErrorOfTheScript)
{
    EXPECT_EQ(errorOf("\nthrow new Error('enough');"), "dir/script.js:2: Error: enough");
    EXPECT_EQ(errorOf("\n\n missing();"), "dir/script.js:3: ReferenceError: missing is not defined");
}

TEST_F(ScriptRunnerTest, ReportsAThrownValueThatIsNoError)
{
    EXPECT_EQ(errorOf("throw 'enough';"), "dir/script.js: uncaught enough");
    EXPECT_EQ(errorOf("throw undefined;"), "dir/script.js: uncaught undefined");
}

TEST_F(ScriptRunnerTest, TakesTheValueOfTheLastStatementForNoError)
{
    EXPECT_EQ(errorOf("new Error('made and dropped')"), "");
    EXPECT_EQ(errorOf("1; 'text'"), "");
}

TEST_F(ScriptRunnerTest, ReportsASyntaxErrorWithItsLineAndRunsNothing)
{
    const std::string error = errorOf("print('a');\nvar = 3;\n");
    EXPECT_THAT(error, testing::StartsWith("dir/script.js:2: SyntaxError: "));
    EXPECT_THAT(printed(), IsEmpty());
}

TEST_F(ScriptRunnerTest, ReportsAScriptThatStopsInTheMiddle)
{
    EXPECT_THAT(errorOf("if (true) {"), testing::HasSubstr("SyntaxError"));
    EXPECT_THAT(errorOf("var x ="), testing::HasSubstr("SyntaxError"));
}

TEST_F(ScriptRunnerTest, RunsAScriptThatEndsInAComment)
{
    EXPECT_EQ(errorOf("print('a') // the end"), "");
    EXPECT_THAT(printed(), ElementsAre("a"));
}

TEST_F(ScriptRunnerTest, RefusesAWrongNumberOfArguments)
{
    EXPECT_EQ(errorOf("test_join()"), "dir/script.js:1: Error: test_join takes 1 to 3 arguments; none was given");
}

TEST_F(ScriptRunnerTest, RefusesArgumentsThatAreNoTexts)
{
    const std::string place = "dir/script.js:1: TypeError: test_join: ";
    EXPECT_EQ(errorOf("test_join(1)"), place + "argument 1 is a number, not a text or an array of texts");
    EXPECT_EQ(errorOf("test_join('a', undefined)"), place + "argument 2 is undefined, not a text or an array of texts");
    EXPECT_EQ(errorOf("test_join(null)"), place + "argument 1 is null, not a text or an array of texts");
    EXPECT_EQ(errorOf("test_join({})"), place + "argument 1 is an object, not a text or an array of texts");
    EXPECT_EQ(errorOf("test_join(print)"), place + "argument 1 is a function, not a text or an array of texts");
    EXPECT_EQ(errorOf("test_join(['a', true])"), place + "element 2 of argument 1 is a truth value, not a text");
    EXPECT_EQ(errorOf("test_join([['a']])"), place + "element 1 of argument 1 is an array, not a text");
}

TEST_F(ScriptRunnerTest, RefusesTextsThatNoFunctionCanTake)
{
    EXPECT_EQ(errorOf("test_join('a\\u0000b')"),
              "dir/script.js:1: TypeError: test_join: argument 1 holds a NUL character");
    EXPECT_EQ(errorOf("test_join(['\\ud800'])"),
              "dir/script.js:1: TypeError: test_join: element 1 of argument 1 holds half a surrogate pair");
}

TEST_F(ScriptRunnerTest, RefusesAWindowFunctionWithoutAnApplicationForWindows)
{
    // this program has windows; what the sentence says without them is tried with the real program
    EXPECT_EQ(errorOf("_bundle_viewer('x')"), "dir/script.js:1: ReferenceError: _bundle_viewer is not defined");
}

TEST_F(ScriptRunnerTest, GivesTheScriptItsArguments)
{
    run("print(args.length, args[0], args[1], Array.isArray(args))", {"-x", "ä b"});
    EXPECT_THAT(printed(), ElementsAre("2 -x ä b true"));
}

TEST_F(ScriptRunnerTest, PrintsAllArgumentsOnOneLine)
{
    run("print(); print('a', 1, null, ['b', 'c'])");
    EXPECT_THAT(printed(), ElementsAre("", "a 1  b,c"));
}

TEST_F(ScriptRunnerTest, EndsAtExitWithItsStatus)
{
    const ScriptEnd end = run("print('a'); exit(7); print('b')");
    EXPECT_TRUE(end.exited);
    EXPECT_EQ(end.status, 7);
    EXPECT_EQ(end.error, QString{});
    EXPECT_THAT(printed(), ElementsAre("a"));
}

TEST_F(ScriptRunnerTest, EndsWithZeroAtExitWithoutAStatus)
{
    const ScriptEnd end = run("exit()");
    EXPECT_TRUE(end.exited);
    EXPECT_EQ(end.status, 0);
}

TEST_F(ScriptRunnerTest, LetsNoHandlerOfTheScriptHoldUpItsExit)
{
    const ScriptEnd end = run("while (true) { try { exit(3); } catch (e) { print('caught'); test_results(); } }");
    EXPECT_EQ(end.status, 3);
    EXPECT_THAT(printed(), IsEmpty());
}

TEST_F(ScriptRunnerTest, StartsEachRunWithoutAnythingOfTheOneBefore)
{
    run("globalThis.left = 'over'; exit(4)");
    const ScriptEnd end = run("print(typeof left)");
    EXPECT_EQ(end.status, 0);
    EXPECT_FALSE(end.exited);
    EXPECT_THAT(printed(), ElementsAre("undefined"));
}
