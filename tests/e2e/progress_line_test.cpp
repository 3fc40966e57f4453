#include "tests/e2e/host_program.h"
#include "tests/e2e/stopped_host.h"
#include "tests/support/noise.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace fs = std::filesystem;

using testing::Each;
using testing::EndsWith;
using testing::Lt;
using testing::SizeIs;

namespace {

constexpr unsigned short wide = 80;
constexpr const char* erase = "\r\033[K";

/// How long work takes until it shows its progress, and how long until it shows more of it.
constexpr std::chrono::milliseconds patience{700};
constexpr std::chrono::milliseconds betweenLines{100};

/// What stood on a terminal, one after the other.
std::vector<std::string> linesOn(const std::string& shown)
{
    std::vector<std::string> lines;
    for (std::size_t at = shown.find(erase); at != std::string::npos;) {
        const std::size_t begin = at + 4;
        at = shown.find(erase, begin);
        lines.push_back(shown.substr(begin, at - begin));
    }
    return lines;
}

/// The first two, and nothing at the end; a slow machine shows more in between.
void expectLines(const std::vector<std::string>& lines, const std::string& first, const std::string& second)
{
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[0], first);
    EXPECT_EQ(lines[1], second);
    EXPECT_EQ(lines.back(), "");
}

class ProgressLine : public testing::Test
{
protected:
    ProgressLine() { fs::create_directory(out); }

    /// What extracts an example of the three files.
    std::vector<std::string> extract() const
    {
        const std::string example = (m_folder / "a.kvbdl.zip").string();
        EXPECT_EQ(runHost({"pack", first, second, third, "--output", example}).status, 0);
        return {"extract", example, "--output", (out / "a").string()};
    }

    /// Holds the program at its first write below `out` until it is long enough at work to show how far it is, and at
    /// the next one until it may show that again.
    void delay(StoppedHost& host) const
    {
        for (const auto& moment : {patience, betweenLines}) {
            ASSERT_TRUE(host.awaitWriteBelow(out)) << host.errors();
            std::this_thread::sleep_for(moment);
        }
    }

private:
    TemporaryFolder m_folder;

protected:
    const fs::path out = m_folder / "out";
    const std::string first = m_folder.write("design/a.kvsch", noise(250'000)).string();
    const std::string second = m_folder.write("design/b.kvsch", noise(150'000)).string();
    const std::string third = m_folder.write("design/c.kvsch", noise(600'000)).string();
};

} // namespace

TEST_F(ProgressLine, IsDrawnAndDrawnAgainAndTakenAway)
{
    StoppedHost host{extract(), wide};
    delay(host);
    EXPECT_EQ(host.awaitEnd(), 0);
    expectLines(linesOn(host.errors()), "extracting 25 % of 1.0 MB", "extracting 40 % of 1.0 MB");
}

TEST_F(ProgressLine, FitsANarrowTerminal)
{
    StoppedHost host{extract(), 20};
    delay(host);
    EXPECT_EQ(host.awaitEnd(), 0);
    const std::vector<std::string> lines = linesOn(host.errors());
    expectLines(lines, "extracting 25 %", "extracting 40 %");
    EXPECT_THAT(lines, Each(SizeIs(Lt(20U))));
}

TEST_F(ProgressLine, IsTakenAwayBeforeTheProgramSaysThatItWasInterrupted)
{
    StoppedHost host{extract(), wide};
    delay(host);
    EXPECT_EQ(host.pressCtrlC(), SIGINT);
    EXPECT_THAT(host.errors(), EndsWith("\r\033[Khollerwick-host: interrupted; nothing was written\r\n"));
    EXPECT_TRUE(fs::is_empty(out));
}

TEST_F(ProgressLine, IsNothingForAPipe)
{
    StoppedHost host{extract()};
    delay(host);
    EXPECT_EQ(host.awaitEnd(), 0);
    EXPECT_EQ(host.errors(), "");
}
