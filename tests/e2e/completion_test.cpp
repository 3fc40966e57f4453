#include "tests/e2e/host_program.h"

#include <QtCore/QStandardPaths>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace fs = std::filesystem;

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::UnorderedElementsAre;

namespace {

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> all;
    std::istringstream stream{text};
    for (std::string line; std::getline(stream, line);)
        all.push_back(line);
    return all;
}

bool isInstalled(const char* shell)
{
    return !QStandardPaths::findExecutable(QString::fromLatin1(shell)).isEmpty();
}

/// A shell's completion script, in a folder with files to complete.
class Completion : public testing::Test
{
protected:
    std::string script(const char* shell)
    {
        const auto generated = runHost({"generate", shell});
        EXPECT_EQ(generated.status, 0);
        return m_folder.write(std::string{"_hollerwick-host."} + shell, generated.output).string();
    }

    std::string run(const char* shell, const std::string& program)
    {
        const auto end =
            runProgram(QString::fromLatin1(shell), {"-c", "cd '" + m_folder.path().string() + "' && " + program});
        EXPECT_EQ(end.status, 0) << end;
        EXPECT_EQ(end.errors, "");
        return end.output;
    }

    /// What bash offers for the last of the words.
    std::vector<std::string> inBash(const std::string& words)
    {
        const std::string source = script("bash");
        return lines(run("bash", "compopt() { :; }; source '" + source + "'; COMP_WORDS=(hollerwick-host " + words +
                                     "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _hollerwick_host; "
                                     "printf '%s\\n' \"${COMPREPLY[@]}\""));
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(Completion, OffersVerbsInBash)
{
    EXPECT_THAT(inBash("c"), UnorderedElementsAre("check", "call", "console"));
    EXPECT_THAT(inBash("--log-level error ex"), ElementsAre("extract"));
}

TEST_F(Completion, OffersTheOptionsOfTheVerbInBash)
{
    EXPECT_THAT(inBash("pack --ti"), ElementsAre("--title"));
    EXPECT_THAT(inBash("info --"), Not(Contains("--title")));
    EXPECT_THAT(inBash("info --"), Contains("--json"));
}

TEST_F(Completion, OffersFunctionsAndValuesInBash)
{
    EXPECT_THAT(inBash("call _create_exampl"),
                UnorderedElementsAre("_create_example", "_create_examples", "_create_examples_bundle_editor",
                                     "_create_example_bundle_editor"));
    EXPECT_THAT(inBash("--log-level e"), ElementsAre("error"));
    EXPECT_THAT(inBash("generate z"), ElementsAre("zsh"));
}

TEST_F(Completion, OffersFilesInBashWhateverTheirNames)
{
    m_folder.write("a bundle.zip", "");
    m_folder.write("directory/a.zip", "");
    EXPECT_THAT(inBash("check 'a b'"), ElementsAre("a bundle.zip"));
    EXPECT_THAT(inBash("extract --output d"), ElementsAre("directory"));
    EXPECT_THAT(inBash("call _filename a"), ElementsAre("a bundle.zip"));
}

TEST_F(Completion, OffersNothingForATextInBash)
{
    m_folder.write("title", "");
    EXPECT_THAT(inBash("pack --title t"), ElementsAre(""));
}

TEST_F(Completion, OffersVerbsOptionsFunctionsAndFilesInZsh)
{
    if (!isInstalled("zsh"))
        GTEST_SKIP() << "no zsh";
    fs::rename(script("zsh"), m_folder / "_hollerwick-host");
    m_folder.write("some.zip", "");
    // the real thing: words and Tab typed into an interactive shell; each read waits for what Tab must add
    const auto typing = m_folder.write("typing.zsh", R"(
        zmodload zsh/zpty
        export TERM=dumb
        zpty shell zsh -f -i
        zpty -w shell "fpath=(${(q)PWD} \$fpath); autoload -Uz compinit; compinit -u -D; PS1=; print rea''dy"
        zpty -r -m shell shown '*ready*'
        complete() {
            zpty -n -w shell "$1"$'\t'
            zpty -r -m shell shown "*$2*" && print -r -- "$1$2"
            zpty -n -w shell $'\C-u'
        }
        complete 'hollerwick-host ch' 'eck'
        complete 'hollerwick-host --log-level er' 'ror'
        complete 'hollerwick-host pack --ti' 'tle'
        complete 'hollerwick-host call _create_examples_b' 'undle_editor'
        complete 'hollerwick-host generate fi' 'sh'
        complete 'hollerwick-host check so' 'me.zip'
        zpty -d shell)");
    EXPECT_EQ(run("zsh", "zsh '" + typing.string() + "'"), "hollerwick-host check\n"
                                                           "hollerwick-host --log-level error\n"
                                                           "hollerwick-host pack --title\n"
                                                           "hollerwick-host call _create_examples_bundle_editor\n"
                                                           "hollerwick-host generate fish\n"
                                                           "hollerwick-host check some.zip\n");
}

TEST_F(Completion, OffersVerbsOptionsAndFunctionsInFish)
{
    if (!isInstalled("fish"))
        GTEST_SKIP() << "no fish";
    const std::string source = script("fish");
    const auto offered = [&](const std::string& words) {
        return run("fish", "source '" + source + "'; complete -C 'hollerwick-host " + words + "'");
    };
    EXPECT_THAT(offered("ch"), testing::StartsWith("check\t"));
    EXPECT_THAT(offered("pack --ti"), testing::StartsWith("--title\t"));
    EXPECT_THAT(offered("call _create_examples_b"), testing::HasSubstr("_create_examples_bundle_editor"));
}

TEST(ManPage, IsGoodTroff)
{
    if (!isInstalled("man"))
        GTEST_SKIP() << "no man";
    const TemporaryFolder folder;
    const auto page = folder.write("hollerwick-host.1", runHost({"generate", "man"}).output);
    const auto end =
        runProgram(QStringLiteral("/bin/sh"),
                   {"-c", "LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l \"$0\" >/dev/null", page.string()});
    EXPECT_EQ(end, (ProgramEnd{0, "", ""}));
}
