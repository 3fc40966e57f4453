#include "tests/e2e/host_program.h"

#include "tests/support/noise.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

namespace fs = std::filesystem;

namespace {

/// Saves two different bundles over one file, one after the other, until somebody ends it. Says when the first is
/// there.
constexpr const char* saveForEver = R"(
const [out, small, large] = args;
for (let i = 0;; ++i) {
    const result = _create_example(i % 2 === 0 ? [small] : [large], out, "title")[0];
    if (result !== "OK") {
        print(result);
        exit(1);
    }
    if (i === 0)
        print("saving");
}
)";

/// How often the program is killed: 200 times, or as often as HOLLERWICK_KILLS says.
int killCount()
{
    const char* const wanted = std::getenv("HOLLERWICK_KILLS");
    return wanted == nullptr ? 200 : std::atoi(wanted);
}

std::vector<std::string> namesIn(const fs::path& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator{directory})
        names.push_back(entry.path().filename().string());
    return names;
}

class KilledProgram : public testing::Test
{
protected:
    KilledProgram()
    {
        fs::create_directory(out.parent_path());
        const auto first = runHost({"call", "_create_example", small.string(), out.string(), "title"});
        EXPECT_EQ(first, (ProgramEnd{0, "OK\n", ""}));
        smallBundle = readFile(out);
        const auto second = runHost({"call", "_create_example", large.string(), out.string(), "title"});
        EXPECT_EQ(second, (ProgramEnd{0, "OK\n", ""}));
        largeBundle = readFile(out);
    }

    /// Starts the program, and ends it that long after it has saved for the first time.
    /// @return  whether it was there to be ended
    bool killAfter(std::chrono::microseconds moment)
    {
        QProcess process;
        process.setProcessEnvironment(bareEnvironment());
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(HOLLERWICK_HOST),
                      {QStringLiteral("run"), QString::fromStdString(script.string()),
                       QString::fromStdString(out.string()), QString::fromStdString(small.string()),
                       QString::fromStdString(large.string())});
        const bool isSaving = process.waitForReadyRead(60'000) && process.readLine() == "saving\n";
        namesWhenSaving = namesIn(out.parent_path());
        std::this_thread::sleep_for(moment);
        process.kill();
        process.waitForFinished();
        return isSaving && process.exitStatus() == QProcess::CrashExit;
    }

    TemporaryFolder folder;
    fs::path small = folder.write("design/small.kvsch", "a small schematic");
    fs::path large = folder.write("design/large.kvsch", noise(1'000'000));
    fs::path script = folder.write("script.js", saveForEver);
    fs::path out = folder / "out/bundle.kvbdl.zip";
    std::string smallBundle;
    std::string largeBundle;
    std::vector<std::string> namesWhenSaving;
};

} // namespace

TEST_F(KilledProgram, LeavesTheOldBundleOrTheNewOneAndTheNextSaveCleansUp)
{
    std::mt19937 generator{8};
    for (int kill = 0; kill < killCount(); ++kill) {
        ASSERT_TRUE(killAfter(std::chrono::microseconds{generator() % 30'000})) << "kill " << kill;
        const std::string bundle = readFile(out);
        ASSERT_TRUE(bundle == smallBundle || bundle == largeBundle) << "kill " << kill;
        // the bundle, and the save that runs: what the program before left behind is gone
        ASSERT_LE(namesWhenSaving.size(), 2U) << "kill " << kill;
    }
    const auto last = runHost({"call", "_create_example", small.string(), out.string(), "title"});
    EXPECT_EQ(last, (ProgramEnd{0, "OK\n", ""}));
    EXPECT_EQ(namesIn(out.parent_path()), std::vector<std::string>{"bundle.kvbdl.zip"});
}
