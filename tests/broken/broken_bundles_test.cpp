#include "tests/broken/corpus_index.h"
#include "tests/script/loaded_module.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

namespace {

/// Calls functions of the plug-in with every file of the corpus. Whatever the file is, the call comes to an end, with a
/// result or a line in the log, and the windows that it shows are drawn and closed.
class BrokenBundles : public testing::Test
{
protected:
    BrokenBundles()
    {
        QObject::connect(&m_closer, &QTimer::timeout, [] {
            if (QWidget* const waiting = QApplication::activeModalWidget()) {
                waiting->grab();
                waiting->close();
            }
        });
        m_closer.start(0);
    }

    ~BrokenBundles() override { closeWindows(); }

    static void closeWindows()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void drawWindows()
    {
        QCoreApplication::processEvents();
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible()) {
                EXPECT_FALSE(window->grab().isNull());
            }
        }
        closeWindows();
    }

    void callWithEvery(const std::string& function, const std::vector<std::vector<std::string>>& before,
                       const std::vector<std::vector<std::string>>& behind)
    {
        for (const CorpusCase& one : readCorpusIndex()) {
            const LogCapture log;
            auto arguments = before;
            arguments.push_back({one.path.string()});
            arguments.insert(arguments.end(), behind.begin(), behind.end());
            const auto result = call(function, arguments);
            const bool isExplained = result.status == Kelvaris::FUNC_OK || !log.lines().empty();
            EXPECT_TRUE(isExplained) << function << " with " << one.name() << " failed without a line in the log";
            drawWindows();
        }
    }

    LoadedModule module;
    TemporaryFolder folder;

private:
    QTimer m_closer;
};

class BrokenBundlesInWindows : public BrokenBundles, public testing::WithParamInterface<const char*>
{
};

} // namespace

TEST_F(BrokenBundles, AreUnpackedOrTheLogSaysWhyNot)
{
    for (const CorpusCase& one : readCorpusIndex()) {
        const TemporaryFolder target;
        const LogCapture log;
        const auto result = call("_unpack_content_bundle", {{one.path.string()}, {target / "new"}});
        ASSERT_EQ(result.results.size(), 1U) << one.name();
        EXPECT_TRUE(result.results.front() == "OK" || !log.lines().empty()) << one.name();
    }
}

TEST_F(BrokenBundles, GiveTheTargetsOfTheirContent)
{
    callWithEvery("_content_bundle_targets",
                  {{"http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content"}}, {});
}

TEST_F(BrokenBundles, GoIntoABarrelOrTheCallSaysWhyNot)
{
    callWithEvery("_create_examples", {}, {{folder / "barrel.kvexs"}});
}

TEST_P(BrokenBundlesInWindows, AreShownOrRefused)
{
    callWithEvery(GetParam(), {}, {});
}

TEST_F(BrokenBundles, AreBrowsedForANewDesign)
{
    callWithEvery("_example_browser_2", {}, {{folder / "designs"}});
}

TEST_F(BrokenBundles, AreLeftOutOfTheListOfADirectory)
{
    for (const CorpusCase& one : readCorpusIndex())
        std::filesystem::copy_file(one.path, folder / (one.path.stem().string() + ".kvbdl.zip"));
    EXPECT_EQ(call("_proto_example_browser", {{folder.path()}}).status, Kelvaris::FUNC_OK);
    drawWindows();
}

INSTANTIATE_TEST_SUITE_P(Functions, BrokenBundlesInWindows,
                         testing::Values("_create_example_bundle_editor", "_create_examples_bundle_editor",
                                         "_proto_scriptable_bundle_editor", "_bundle_viewer", "_proto_package_browser",
                                         "_proto_examples_browser2", "_proto_example_browser"),
                         [](const auto& parameter) { return std::string{parameter.param}.substr(1); });
