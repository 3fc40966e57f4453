#include "tests/e2e/host_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

using testing::HasSubstr;
using testing::StartsWith;

TEST(Call, PrintsTheResult)
{
    EXPECT_EQ(runHost({"call", "_filename", "C:\\a\\b"}), (ProgramEnd{0, "b\n", ""}));
}

TEST(Call, FollowsThePathGrammarOfWindowsOnThisPlatform)
{
    struct Example
    {
        const char* function;
        const char* path;
        const char* result;
    };
    for (const Example& example : {
             Example{"_filename", "C:\\", ""},
             {"_parent_path", "C:\\", "C:\\"},
             {"_filename", "C:", ""},
             {"_parent_path", "C:", "C:"},
             {"_filename", "a", "a"},
             {"_parent_path", "a", ""},
             {"_filename", "C:a", "a"},
             {"_parent_path", "C:a", "C:"},
             {"_filename", "a/b/", ""},
             {"_parent_path", "a/b/", "a/b"},
             {"_parent_path", "a//b", "a"},
             {"_parent_path", "/a", "/"},
             {"_filename", "\\\\server\\share\\f", "f"},
             {"_parent_path", "\\\\server\\share", "\\\\server\\"},
             {"_filename", "\\\\server", ""},
             {"_filename", "", ""},
             {"_parent_path", "", ""},
         }) {
        EXPECT_EQ(runHost({"call", example.function, example.path}),
                  (ProgramEnd{0, std::string{example.result} + "\n", ""}))
            << example.function << " of " << example.path;
    }
}

TEST(Call, PrintsEachResultOnALineOfItsOwn)
{
    const auto end = runHost({"call", "_schematic_bundle_helper_identify_descedants", "top.kvsch",
                              R"(["a.kvsch;X1","b.kvsch;X2.X1","c.kvsch;X9.X8"])"});
    EXPECT_EQ(end, (ProgramEnd{0, "a.kvsch;top.kvsch\nb.kvsch;a.kvsch\n", ""}));
}

TEST(Call, PrintsNothingForAFunctionWithoutResults)
{
    EXPECT_EQ(runHost({"call", "_bundle_test", "x"}), (ProgramEnd{0, "", ""}));
}

TEST(Call, PrintsOneLineOfJsonOnRequest)
{
    EXPECT_EQ(runHost({"call", "_filename", "C:\\a\\ä \"b\"", "--json"}),
              (ProgramEnd{0, "{\"status\":0,\"results\":[\"ä \\\"b\\\"\"]}\n", ""}));
    EXPECT_EQ(runHost({"call", "--json", "_bundle_test", "x"}), (ProgramEnd{0, "{\"status\":0,\"results\":[]}\n", ""}));
}

TEST(Call, TellsAFailureByStatusAndLogAndPrintsNoResult)
{
    EXPECT_EQ(runHost({"call", "_filename", "[]"}),
              (ProgramEnd{1, "", "error [script/function] _filename failed: argument index out of range\n"}));
    EXPECT_EQ(runHost({"call", "_filename", "[]", "--json", "--log-level", "off"}),
              (ProgramEnd{1, "{\"status\":1,\"results\":[]}\n", ""}));
}

TEST(Call, WritesTwoLinesForAFailedCallWhenCallsAreLogged)
{
    EXPECT_EQ(runHost({"--log-script-calls", "call", "_filename", "[]"}),
              (ProgramEnd{1, "",
                          "diagnostic [script] function started: _filename\n"
                          "error [script/function] _filename failed: argument index out of range\n"}));
}

TEST(Call, WritesTheSameLineTwiceForASuccessfulCallWhenCallsAreLogged)
{
    EXPECT_EQ(runHost({"call", "_filename", "a", "--log-script-calls"}),
              (ProgramEnd{0, "a\n",
                          "diagnostic [script] function started: _filename\n"
                          "diagnostic [script] function started: _filename\n"}));
}

TEST(Call, LeavesOutLinesBelowTheLogLevel)
{
    EXPECT_EQ(runHost({"--log-script-calls", "--log-level", "error", "call", "_filename", "[]"}).errors,
              "error [script/function] _filename failed: argument index out of range\n");
}

TEST(Call, RefusesAnUnknownFunctionAndSuggestsACloseName)
{
    EXPECT_EQ(runHost({"call", "_filname", "a"}),
              (ProgramEnd{2, "", "hollerwick-host: there is no function _filname; did you mean _filename?\n"}));
}

TEST(Call, RefusesAWrongNumberOfArguments)
{
    EXPECT_EQ(runHost({"call", "_filename"}),
              (ProgramEnd{2, "", "hollerwick-host: _filename takes 1 argument; none was given\n"}));
    EXPECT_EQ(runHost({"call", "_create_example", "a", "b"}),
              (ProgramEnd{2, "", "hollerwick-host: _create_example takes 3 to 6 arguments; 2 were given\n"}));
    EXPECT_EQ(runHost({"call", "_schematic_bundle_create", "a"}),
              (ProgramEnd{2, "", "hollerwick-host: _schematic_bundle_create takes no argument; 1 was given\n"}));
}

TEST(Call, RefusesBrokenJsonAndSaysWhere)
{
    const auto end = runHost({"call", "_parent_path", "[\"a\", b]"});
    EXPECT_EQ(end.status, 2);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.errors,
                StartsWith("hollerwick-host: argument 1 begins with \"[\" and is no JSON array of texts: "));
    EXPECT_THAT(end.errors, HasSubstr(" at character 7\n"));
}

TEST(Call, RefusesAMissingPluginAndSaysWhichPath)
{
    const TemporaryFolder folder;
    const std::string path = (folder / "none.so").string();
    EXPECT_EQ(runHost({"--plugin", path, "call", "_filename", "a"}),
              (ProgramEnd{2, "", "hollerwick-host: there is no plug-in " + path + "\n"}));
}

TEST(Call, TakesUtf8InAndOutWhateverTheLocale)
{
    EXPECT_EQ(runHost({"call", "_filename", "/größe/日本語 😀.kvsch"}), (ProgramEnd{0, "日本語 😀.kvsch\n", ""}));
}

TEST(Call, RefusesAnArgumentThatIsNotUtf8)
{
    const auto end = runProgram(QStringLiteral("/bin/sh"),
                                {"-c", "exec \"$0\" call _filename \"$(printf 'a\\377')\"", HOLLERWICK_HOST});
    EXPECT_EQ(end, (ProgramEnd{2, "", "hollerwick-host: word 3 of the command line is not valid UTF-8\n"}));
}

TEST(Call, TakesArgumentsThatLookLikeOptions)
{
    EXPECT_EQ(runHost({"call", "_filename", "-a/--b"}).output, "--b\n");
    EXPECT_EQ(runHost({"call", "_filename", "--", "--json"}).output, "--json\n");
}

TEST(Call, ConnectsToNoDisplayForAFunctionWithoutAWindow)
{
    auto environment = bareEnvironment();
    // an application object with windows would end the program here
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("nonexistent"));
    EXPECT_EQ(runHost({"call", "_filename", "a/b"}, environment), (ProgramEnd{0, "b\n", ""}));
}

TEST(Call, EndsWithASentenceWhenTheDisplayCannotBeReached)
{
    auto environment = bareEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("nonexistent"));
    const auto end = runHost({"call", "_create_example_bundle_editor"}, environment);
    EXPECT_EQ(end.status, 2);
    EXPECT_THAT(end.errors, HasSubstr("hollerwick-host: cannot open windows on this display: "));
}

TEST(Call, EndsWithASentenceWhenThereIsNoDisplay)
{
    EXPECT_EQ(
        runHost({"call", "_bundle_viewer", "a.zip"}),
        (ProgramEnd{2, "",
                    "hollerwick-host: _bundle_viewer opens a window, and there is no display (neither DISPLAY nor "
                    "WAYLAND_DISPLAY is set); --grab DIR takes pictures without one\n"}));
}

TEST(Functions, ListsAllInTheOrderOfRegistrationWithTheirArity)
{
    EXPECT_EQ(runHost({"functions"}), (ProgramEnd{0,
                                                  "_example_browser_2 2\n"
                                                  "_create_examples_bundle_editor 0-1\n"
                                                  "_create_example_bundle_editor 0-1\n"
                                                  "_create_temporary_directory 0\n"
                                                  "_unpack_content_bundle 2\n"
                                                  "_content_bundle_targets 2\n"
                                                  "_parent_path 1\n"
                                                  "_filename 1\n"
                                                  "_proto_scriptable_bundle_editor 0-1\n"
                                                  "_proto_package_browser 0-1\n"
                                                  "_proto_examples_browser2 0-1\n"
                                                  "_proto_example_browser 0-1\n"
                                                  "_bundle_test 1\n"
                                                  "_bundle_viewer 1\n"
                                                  "_schematic_bundle_create 0\n"
                                                  "_schematic_bundle_set_root 2\n"
                                                  "_schematic_bundle_add_descendant 4\n"
                                                  "_schematic_bundle_write 2\n"
                                                  "_schematic_bundle_close 1\n"
                                                  "_schematic_bundle_clear_all 0\n"
                                                  "_schematic_bundle_helper_identify_descedants 2\n"
                                                  "_create_example 3-6\n"
                                                  "_create_examples 2\n",
                                                  ""}));
}

TEST(Functions, ListsThemAsOneLineOfJsonOnRequest)
{
    const auto end = runHost({"functions", "--json"});
    EXPECT_THAT(end.output, StartsWith("[{\"name\":\"_example_browser_2\",\"minimum\":2,\"maximum\":2},"));
    EXPECT_THAT(end.output, testing::EndsWith("{\"name\":\"_create_examples\",\"minimum\":2,\"maximum\":2}]\n"));
    EXPECT_EQ(std::count(end.output.begin(), end.output.end(), '\n'), 1);
    EXPECT_EQ(std::count(end.output.begin(), end.output.end(), '{'), 23);
}

TEST(CommandLineOfTheProgram, PrintsHelpAndVersionOnStandardOutput)
{
    const auto help = runHost({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_THAT(help.output, HasSubstr("console"));
    EXPECT_THAT(runHost({"--version"}).output, StartsWith("hollerwick-host "));
}

TEST(CommandLineOfTheProgram, OpensTheConsoleWhenItIsStartedFromADesktop)
{
    auto environment = bareEnvironment();
    // a display that is not there: the program tries to open a window on it
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":4711"));
    const auto end = runHost({}, environment);
    EXPECT_EQ(end.status, 2);
    EXPECT_THAT(end.errors, StartsWith("hollerwick-host: cannot open windows on this display"));
}

TEST(CommandLineOfTheProgram, EndsWithTwoAndOneSentenceWhenItIsWrong)
{
    EXPECT_EQ(runHost({}), (ProgramEnd{2, "",
                                       "hollerwick-host: a verb is missing; the verbs are info, list, check, extract, "
                                       "pack, barrel, functions, call, run, console and generate "
                                       "(\"hollerwick-host --help\" tells more)\n"}));
    EXPECT_EQ(runHost({"--log-level", "loud", "functions"}).status, 2);
}
