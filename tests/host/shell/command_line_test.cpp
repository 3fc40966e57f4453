#include "host/shell/command_line.h"
#include "host/shell/command_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

CommandLine parsed(const std::vector<std::string>& words)
{
    const auto line = parseCommandLine(words);
    EXPECT_TRUE(line.hasValue()) << (line ? "" : line.error().text);
    return line ? *line : CommandLine{};
}

std::string refusal(const std::vector<std::string>& words)
{
    const auto line = parseCommandLine(words);
    if (line)
        return "accepted";
    EXPECT_EQ(line.error().status, 2);
    return line.error().text;
}

} // namespace

TEST(CommandLine, TellsTheVerbsApart)
{
    EXPECT_EQ(parsed({"functions"}).verb, Verb::functions);
    EXPECT_EQ(parsed({"call", "_filename"}).verb, Verb::call);
    EXPECT_EQ(parsed({"run", "a.js"}).verb, Verb::run);
    EXPECT_EQ(parsed({"console"}).verb, Verb::console);
    EXPECT_EQ(parsed({"info", "a.zip"}).verb, Verb::info);
    EXPECT_EQ(parsed({"list", "a.kvexs"}).verb, Verb::list);
    EXPECT_EQ(parsed({"check", "a.zip"}).verb, Verb::check);
    EXPECT_EQ(parsed({"extract", "a.zip"}).verb, Verb::extract);
    EXPECT_EQ(parsed({"pack", "a.kvsch"}).verb, Verb::pack);
    EXPECT_EQ(parsed({"barrel", "a.zip"}).verb, Verb::barrel);
    EXPECT_EQ(parsed({"generate", "man"}).verb, Verb::generate);
}

TEST(CommandLine, TakesTheOptionsOfAPackingVerb)
{
    const CommandLine line =
        parsed({"pack", "a.kvsch", "--title", "T", "--description=D", "--manufacturer", "M", "--keyword", "[a,b]",
                "b.va", "--keyword", "c", "--primary", "b.va", "--output", "o.zip", "--force", "--dry-run", "--json"});
    EXPECT_THAT(line.arguments, ElementsAre("a.kvsch", "b.va"));
    EXPECT_EQ(line.title, "T");
    EXPECT_EQ(line.description, "D");
    EXPECT_EQ(line.manufacturer, "M");
    EXPECT_THAT(line.keywords, ElementsAre("[a,b]", "c"));
    EXPECT_EQ(line.primary, "b.va");
    EXPECT_EQ(line.output, "o.zip");
    EXPECT_TRUE(line.force && line.dryRun && line.json);
}

TEST(CommandLine, TakesFilesWithOddNamesAsTheyAre)
{
    EXPECT_THAT(parsed({"check", "[a,b]", "-", "--", "--json", "-x"}).arguments,
                ElementsAre("[a,b]", "-", "--json", "-x"));
}

TEST(CommandLine, RefusesAnUnknownOptionBehindAFile)
{
    EXPECT_THAT(refusal({"check", "a.zip", "--jsn"}), HasSubstr("--jsn"));
    EXPECT_THAT(refusal({"pack", "a.kvsch", "--titel", "x"}), HasSubstr("--titel"));
}

TEST(CommandLine, RefusesAVerbWithoutItsFile)
{
    EXPECT_EQ(refusal({"info"}), "FILE is required: info FILE");
    EXPECT_EQ(refusal({"check", "--json"}), "FILE is required: check FILE...");
}

TEST(CommandLine, RefusesASecondFileWhereOneIsWanted)
{
    EXPECT_EQ(refusal({"info", "a", "b"}), "\"b\" is one too many: info FILE");
}

TEST(CommandLine, RefusesAnUnknownThingToGenerate)
{
    EXPECT_EQ(refusal({"generate", "html"}), "\"html\" is none of man, bash, zsh or fish");
}

TEST(CommandLine, TellsWhetherErrorsWereAskedForAsJson)
{
    EXPECT_TRUE(parseCommandLine({"fly", "--json"}).error().json);
    EXPECT_FALSE(parseCommandLine({"fly", "--", "--json"}).error().json);
}

TEST(CommandLine, TakesWhatIsNoOptionOfOursBehindTheNameAsArguments)
{
    const CommandLine line = parsed({"call", "_create_example", "-x", "--unknown", "[\"a\"]", "", "-"});
    EXPECT_EQ(line.subject, "_create_example");
    EXPECT_THAT(line.arguments, ElementsAre("-x", "--unknown", "[\"a\"]", "", "-"));
}

TEST(CommandLine, FindsItsOptionsAmongTheArguments)
{
    const CommandLine line = parsed({"call", "f", "a", "--json", "b", "--grab", "shots", "--keys=Tab Down", "c"});
    EXPECT_TRUE(line.json);
    EXPECT_EQ(line.grabDirectory, "shots");
    EXPECT_EQ(line.keys, "Tab Down");
    EXPECT_THAT(line.arguments, ElementsAre("a", "b", "c"));
}

TEST(CommandLine, TakesEverythingBehindTwoDashesAsArguments)
{
    const CommandLine line = parsed({"call", "f", "--", "--json", "--", "--help"});
    EXPECT_FALSE(line.json);
    EXPECT_THAT(line.arguments, ElementsAre("--json", "--", "--help"));
}

TEST(CommandLine, TakesANameThatBeginsWithADashBehindTwoDashes)
{
    const CommandLine line = parsed({"call", "--", "-odd", "x"});
    EXPECT_EQ(line.subject, "-odd");
    EXPECT_THAT(line.arguments, ElementsAre("x"));
}

TEST(CommandLine, TakesTheNameOfAVerbAsAnArgument)
{
    EXPECT_THAT(parsed({"call", "f", "functions", "run"}).arguments, ElementsAre("functions", "run"));
    EXPECT_EQ(parsed({"call", "call"}).subject, "call");
}

TEST(CommandLine, TakesANameInBracketsAsItIs)
{
    EXPECT_EQ(parsed({"call", "[a,b]"}).subject, "[a,b]");
}

TEST(CommandLine, ReadsCommonOptionsBeforeAndBehindTheVerb)
{
    for (const auto& words :
         {std::vector<std::string>{"--log-script-calls", "--log-level", "error", "--plugin", "p.so", "call", "f"},
          std::vector<std::string>{"call", "--log-script-calls", "f", "--log-level=error", "--plugin=p.so"}}) {
        const CommandLine line = parsed(words);
        EXPECT_TRUE(line.logScriptCalls);
        EXPECT_EQ(line.logThreshold, LogThreshold::error);
        EXPECT_EQ(line.plugin, "p.so");
        EXPECT_EQ(line.subject, "f");
        EXPECT_THAT(line.arguments, IsEmpty());
    }
}

TEST(CommandLine, ShowsEveryLogLineUnlessToldOtherwise)
{
    EXPECT_EQ(parsed({"functions"}).logThreshold, LogThreshold::diagnostic);
    EXPECT_EQ(parsed({"--log-level", "off", "functions"}).logThreshold, LogThreshold::off);
}

TEST(CommandLine, GivesAValueThatLooksLikeAnOptionToTheOptionBeforeIt)
{
    EXPECT_EQ(parsed({"call", "f", "--grab", "--json"}).grabDirectory, "--json");
}

TEST(CommandLine, NamesTheVerbsWhenThereIsNone)
{
    const std::string sentence =
        "a verb is missing; the verbs are info, list, check, extract, pack, barrel, functions, "
        "call, run, console and generate (\"hollerwick-host --help\" tells more)";
    EXPECT_EQ(refusal({}), sentence);
    EXPECT_EQ(refusal({"--log-script-calls"}), sentence);
}

TEST(CommandLine, NamesTheVerbsWhenOneIsUnknown)
{
    EXPECT_EQ(refusal({"xyzzy", "--json"}), "there is no verb \"xyzzy\"; the verbs are " + listedVerbs());
}

TEST(CommandLine, SuggestsACloseVerb)
{
    EXPECT_EQ(refusal({"chekc", "a.zip"}), "there is no verb \"chekc\"; did you mean check?");
}

TEST(CommandLine, RefusesACallWithoutAName)
{
    EXPECT_THAT(refusal({"call", "--json"}), HasSubstr("NAME is required"));
    EXPECT_THAT(refusal({"run"}), HasSubstr("SCRIPT.js is required"));
}

TEST(CommandLine, RefusesAnUnknownOptionBeforeTheName)
{
    EXPECT_EQ(refusal({"call", "--fast", "f"}), "there is no option --fast");
    EXPECT_EQ(refusal({"-x", "info"}), "there is no option -x");
}

TEST(CommandLine, SuggestsACloseOptionOfTheVerb)
{
    EXPECT_EQ(refusal({"info", "--jsn", "a.zip"}), "there is no option --jsn; did you mean --json?");
    EXPECT_EQ(refusal({"pack", "a", "--keywords=b"}), "there is no option --keywords; did you mean --keyword?");
    EXPECT_EQ(refusal({"info", "--log-levl", "off", "a.zip"}),
              "there is no option --log-levl; did you mean --log-level?");
}

TEST(CommandLine, RefusesArgumentsOfVerbsThatTakeNone)
{
    EXPECT_THAT(refusal({"functions", "all"}), HasSubstr("all"));
    EXPECT_THAT(refusal({"console", "a.js"}), HasSubstr("a.js"));
}

TEST(CommandLine, RefusesAnUnknownLogLevel)
{
    EXPECT_EQ(refusal({"--log-level", "loud", "functions"}), "--log-level: \"loud\" is none of diagnostic, error, off");
}

TEST(CommandLine, RefusesKeysWithoutPictures)
{
    EXPECT_EQ(refusal({"call", "f", "--keys", "Tab"}), "--keys requires --grab");
}

TEST(CommandLine, RefusesAnOptionWithoutItsValue)
{
    EXPECT_EQ(refusal({"call", "f", "--grab"}), "--grab needs a value behind it");
    EXPECT_EQ(refusal({"--plugin"}), "--plugin needs a value behind it");
}

TEST(CommandLine, RefusesTextThatIsNotUtf8)
{
    EXPECT_EQ(refusal({"call", "f", "gr\xFC\xDF"}), "word 3 of the command line is not valid UTF-8");
}

TEST(CommandLine, KeepsUtf8AsItIs)
{
    EXPECT_THAT(parsed({"call", "f", "Maß 日本 😀"}).arguments, ElementsAre("Maß 日本 😀"));
}

TEST(CommandLine, EndsWithHelpOnStandardOutput)
{
    const auto line = parseCommandLine({"--help"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().status, 0);
    for (const CommandRow& command : commandTable())
        EXPECT_THAT(line.error().text, HasSubstr(std::string{command.summary}));
    for (const StatusRow& status : statusTable())
        EXPECT_THAT(line.error().text, HasSubstr(std::string{status.meaning}));
    for (const char* word : {"--log-script-calls", "--log-level", "--plugin"})
        EXPECT_THAT(line.error().text, HasSubstr(word));
}

TEST(CommandLine, EndsWithTheHelpOfAVerb)
{
    const auto line = parseCommandLine({"call", "--help"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().status, 0);
    EXPECT_THAT(line.error().text, HasSubstr("hollerwick-host call"));
    EXPECT_THAT(line.error().text, HasSubstr("--keys"));
}

TEST(CommandLine, EndsWithTheVersion)
{
    const auto line = parseCommandLine({"--version"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().status, 0);
    EXPECT_THAT(line.error().text, testing::MatchesRegex("hollerwick-host [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}
