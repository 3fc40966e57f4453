#include "tests/e2e/host_program.h"
#include "tests/e2e/stopped_host.h"
#include "tests/support/noise.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace {

constexpr const char* nothingWritten = "hollerwick-host: interrupted; nothing was written\n";
constexpr const char* interrupted = "hollerwick-host: interrupted\n";

std::vector<std::string> namesBelow(const fs::path& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator{directory})
        names.push_back(entry.path().filename().string());
    return names;
}

class InterruptedProgram : public testing::Test
{
protected:
    InterruptedProgram() { fs::create_directory(out); }

    /// An example of both files.
    std::string example() const
    {
        const std::string path = (m_folder / "made.kvbdl.zip").string();
        EXPECT_EQ(runHost({"pack", primary, other, "--output", path}).status, 0);
        return path;
    }

    std::string script(const std::string& text) const { return m_folder.write("script.js", text).string(); }

    /// Sends the signal when the program is about to write its first bytes below `out`, and expects that it ends by
    /// that.
    void interruptAtFirstWrite(StoppedHost& host, int signal = SIGINT) const
    {
        ASSERT_TRUE(host.awaitWriteBelow(out)) << host.output() << host.errors();
        EXPECT_EQ(host.interrupt(signal), signal) << host.output() << host.errors();
    }

    /// The same, where something of what is being made stands on the disk under its name by then.
    void interruptHalfDone(StoppedHost& host) const
    {
        ASSERT_TRUE(host.awaitWriteBelow(out)) << host.output() << host.errors();
        EXPECT_THAT(namesBelow(out), Not(IsEmpty()));
        EXPECT_EQ(host.interrupt(SIGINT), SIGINT) << host.output() << host.errors();
        EXPECT_THAT(namesBelow(out), IsEmpty());
    }

private:
    TemporaryFolder m_folder;

protected:
    const fs::path out = m_folder / "out";
    const std::string bundle = (out / "a.kvbdl.zip").string();
    const std::string unpacked = (out / "unpacked").string();
    const std::string primary = m_folder.write("design/a.kvsch", noise(200'000)).string();
    const std::string other = m_folder.write("design/b.kvsch", noise(300'000)).string();
};

} // namespace

TEST_F(InterruptedProgram, EndsPackingByTheSignalAndLeavesTheOldFile)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::ofstream{bundle} << "old";
        StoppedHost host{{"pack", primary, other, "--output", bundle, "--force"}};
        interruptAtFirstWrite(host, signal);
        EXPECT_EQ(host.errors(), nothingWritten);
        EXPECT_EQ(host.output(), "");
        EXPECT_THAT(filesBelow(out), UnorderedElementsAre(Pair("a.kvbdl.zip", "old")));
    }
}

TEST_F(InterruptedProgram, EndsMakingABarrelAndLeavesNothing)
{
    StoppedHost host{{"barrel", example(), "--output", (out / "a.kvexs").string()}};
    interruptAtFirstWrite(host);
    EXPECT_EQ(host.errors(), nothingWritten);
    EXPECT_THAT(namesBelow(out), IsEmpty());
}

TEST_F(InterruptedProgram, EndsExtractingAndRemovesWhatItHadWritten)
{
    StoppedHost host{{"extract", example(), "--output", unpacked}};
    interruptHalfDone(host);
    EXPECT_EQ(host.errors(), nothingWritten);
    EXPECT_EQ(host.output(), "");
}

TEST_F(InterruptedProgram, EndsAFunctionThatUnpacksAndRemovesWhatItHadWritten)
{
    StoppedHost host{{"call", "_unpack_content_bundle", example(), unpacked}};
    interruptHalfDone(host);
    EXPECT_EQ(host.output(), "FAILED\n");
    EXPECT_THAT(host.errors(), EndsWith(interrupted));
}

TEST_F(InterruptedProgram, EndsAFunctionThatPacksAndLeavesNothing)
{
    StoppedHost host{{"call", "_create_example", primary, bundle, "title"}};
    interruptAtFirstWrite(host);
    EXPECT_THAT(host.errors(), EndsWith(interrupted));
    EXPECT_THAT(namesBelow(out), IsEmpty());
}

TEST_F(InterruptedProgram, EndsAScriptInTheMiddleOfACall)
{
    StoppedHost host{{"run", script("for (;;) try { _unpack_content_bundle(args[0], args[1]); } catch (error) {}"),
                      example(), unpacked}};
    interruptHalfDone(host);
    EXPECT_THAT(host.errors(), EndsWith(interrupted));
}

TEST_F(InterruptedProgram, EndsAScriptThatDoesNotEnd)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        StoppedHost host{{"run", script("print('runs'); for (;;) try { for (;;) ; } catch (error) {}")}};
        ASSERT_TRUE(host.awaitText("runs\n"));
        EXPECT_EQ(host.interrupt(signal), signal);
        EXPECT_EQ(host.output(), "runs\n");
        EXPECT_EQ(host.errors(), interrupted);
    }
}

TEST_F(InterruptedProgram, EndsWhereAScriptCannotBeStoppedWhenItIsAskedAgain)
{
    StoppedHost host{{"run", script("print('runs'); /^(a+)+$/.test('a'.repeat(60) + 'b');")}};
    ASSERT_TRUE(host.awaitText("runs\n"));
    EXPECT_EQ(host.insist(SIGINT), SIGINT);
    EXPECT_EQ(host.errors(), interrupted);
}

TEST_F(InterruptedProgram, EndsWhileAWindowIsOpen)
{
    StoppedHost host{{"call", "_create_example_bundle_editor", example(), "--log-script-calls"}};
    ASSERT_TRUE(host.awaitText("_create_example_bundle_editor"));
    EXPECT_EQ(host.interrupt(SIGINT), SIGINT);
    EXPECT_THAT(host.errors(), EndsWith(interrupted));
}

TEST_F(InterruptedProgram, EndsWhileAScriptWaitsForADialog)
{
    StoppedHost host{{"run", script("_example_browser_2(args[0], args[1]);"),
                      std::string{SAMPLES_DIRECTORY} + "/none.kvexs", unpacked, "--log-script-calls"}};
    ASSERT_TRUE(host.awaitText("_example_browser_2"));
    EXPECT_EQ(host.interrupt(SIGINT), SIGINT);
    EXPECT_THAT(host.errors(), EndsWith(interrupted));
}
