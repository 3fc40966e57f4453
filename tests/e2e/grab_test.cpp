#include "tests/e2e/host_program.h"

#include <QtGui/QImage>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::StartsWith;

namespace {

/// Bundles made of the samples, and a place for pictures.
class GrabTest : public testing::Test
{
protected:
    GrabTest()
    {
        const std::string samples = SAMPLES_DIRECTORY;
        EXPECT_EQ(runHost({"run", samples + "/build_samples.js", samples, m_folder.path().string()}).status, 0);
    }

    std::string file(const std::string& name) const { return (m_folder / name).string(); }

    std::vector<std::string> pictures() const
    {
        std::vector<std::string> names;
        for (const auto& [name, bytes] : filesBelow(m_folder / "shots")) {
            names.push_back(name);
            EXPECT_FALSE(QImage::fromData(QByteArray::fromStdString(bytes)).isNull()) << name;
        }
        return names;
    }

    const TemporaryFolder& folder() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST_F(GrabTest, TakesAPictureOfAWindowAndEndsWithoutADisplay)
{
    const auto end = runHost({"call", "_bundle_viewer", file("rc_lowpass.kvbdl.zip"), "--grab", file("shots")});
    EXPECT_EQ(end.status, 0) << end;
    EXPECT_EQ(end.output, "");
    EXPECT_EQ(pictures().size(), 1U);
    EXPECT_THAT(pictures().front(), StartsWith("01-"));
}

TEST_F(GrabTest, TakesPicturesOfAModalDialogAndTypesIntoIt)
{
    const auto end = runHost({"call", "_example_browser_2", file("samples.kvexs"), file("new"), "--grab", file("shots"),
                              "--keys", "Tab Down"});
    EXPECT_EQ(end.status, 0) << end;
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(pictures(), ElementsAre("01-ExampleBrowserDialog.png", "02-ExampleBrowserDialog-key-Tab.png",
                                        "03-ExampleBrowserDialog-key-Down.png"));
}

TEST_F(GrabTest, TakesPicturesOfEveryWindowThatAScriptOpens)
{
    const auto script = folder().write("windows.js", "_bundle_viewer(args[0]); _proto_package_browser(args[0]);"
                                                     "_create_example_bundle_editor(args[0]); print('opened')");
    const auto end = runHost({"run", script.string(), file("rc_lowpass.kvbdl.zip"), "--grab", file("shots")});
    EXPECT_EQ(end.status, 0) << end;
    EXPECT_EQ(end.output, "opened\n");
    EXPECT_EQ(pictures().size(), 3U);
}

TEST_F(GrabTest, TakesAPictureOfTheConsole)
{
    EXPECT_EQ(runHost({"console", "--grab", file("shots")}).status, 0);
    EXPECT_THAT(pictures(), ElementsAre("01-ConsoleWindow.png"));
}

TEST_F(GrabTest, EndsAtExitWithoutWaitingForWindows)
{
    const auto script = folder().write("exit.js", "_bundle_viewer(args[0]); exit(5)");
    auto environment = bareEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    EXPECT_EQ(runHost({"run", script.string(), file("rc_lowpass.kvbdl.zip")}, environment).status, 5);
}

TEST_F(GrabTest, RefusesKeysThatDoNotExist)
{
    const auto end =
        runHost({"call", "_bundle_viewer", file("samples.kvexs"), "--grab", file("shots"), "--keys", "Tab Retrun"});
    EXPECT_EQ(
        end,
        (ProgramEnd{2, "", "hollerwick-host: --keys: there is no key \"Retrun\"; a text to type stands in quotes\n"}));
}

TEST_F(GrabTest, RefusesAPlaceThatIsNoDirectory)
{
    const std::string place = folder().write("plain", "x").string() + "/below";
    const auto end = runHost({"call", "_bundle_viewer", file("samples.kvexs"), "--grab", place});
    EXPECT_EQ(end, (ProgramEnd{2, "", "hollerwick-host: --grab: cannot make the directory " + place + "\n"}));
}

TEST_F(GrabTest, GivesTheScriptTheDesignThatTheDialogMade)
{
    // the search leaves one example; behind Return stands the page with the location, three steps before "Create"
    const std::string keys = "'RC low' Tab Tab Down Return Tab Tab Tab Space";
    const auto script = folder().write("new.js", "print(_example_browser_2([args[0]], args[1])[0])");
    const auto end =
        runHost({"run", script.string(), file("samples.kvexs"), file("new"), "--grab", file("shots"), "--keys", keys});
    EXPECT_EQ(end.status, 0) << end;
    const fs::path primary = folder() / "new/RC low-pass filter, 1.06 kHz/content/rc_lowpass.kvsch";
    EXPECT_EQ(end.output, primary.string() + "\n");
    EXPECT_EQ(readFile(primary), readFile(fs::path{SAMPLES_DIRECTORY} / "designs/rc_lowpass/rc_lowpass.kvsch"));
}

TEST_F(GrabTest, ShowsTheFormsInTheLanguageOfTheUser)
{
    const fs::path german = fs::path{HOLLERWICK_HOST}.parent_path() / "../translations/hollerwick_de.qm";
    ASSERT_TRUE(fs::exists(german)) << german;
    const std::vector<std::string> words{"call",   "_example_browser_2", file("samples.kvexs"), file("new"),
                                         "--grab", file("shots")};
    ASSERT_EQ(runHost(words).status, 0);
    const std::string english = filesBelow(folder() / "shots").begin()->second;
    auto environment = bareEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    ASSERT_EQ(runHost(words, environment).status, 0);
    EXPECT_NE(filesBelow(folder() / "shots").begin()->second, english);
}
