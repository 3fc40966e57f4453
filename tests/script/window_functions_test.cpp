#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "tests/script/loaded_module.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QTreeWidget>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace Kelvaris;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Windows have to go before the module, which holds their code.
void closeAllWindows()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(QApplication::allWidgets().isEmpty());
}

class WindowFunctions : public testing::Test
{
protected:
    WindowFunctions()
    {
        EXPECT_THAT(call("_create_example", {{folder.write("design/top.kvsch", "top")}, {example}, {"T"}}).results,
                    ElementsAre("OK"));
        EXPECT_THAT(call("_create_examples", {{example}, {barrel}}).results, ElementsAre("OK"));
    }

    ~WindowFunctions() override { closeAllWindows(); }

    /// The classes of the visible windows.
    static std::vector<std::string> windows()
    {
        std::vector<std::string> classes;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                classes.emplace_back(window->metaObject()->className());
        }
        return classes;
    }

    /// Presses Escape, so to speak, in the modal window that comes up next.
    void cancelNextDialog()
    {
        QTimer::singleShot(0, [this] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            cancelled = dialog->windowTitle().toStdString();
            dialog->reject();
        });
    }

    static std::string failure(const std::string& name, std::string_view reason)
    {
        return "error [script/function] " + name + " failed: " + std::string{reason};
    }

    LoadedModule module;
    TemporaryFolder folder;
    std::string example = folder / "example.kvbdl.zip";
    std::string barrel = folder / "barrel.kvexs";
    std::string broken = folder.write("broken.zip", "no package");
    std::string cancelled;
    LogCapture log;
};

class NewBundleFunction : public WindowFunctions, public testing::WithParamInterface<const char*>
{
};

class OpeningFunction : public WindowFunctions, public testing::WithParamInterface<const char*>
{
};

TEST_F(WindowFunctions, TheExampleBundleEditorOpensOnANewBundleAndOnAFile)
{
    EXPECT_EQ(call("_create_example_bundle_editor", {}).status, FUNC_OK);
    EXPECT_EQ(call("_create_example_bundle_editor", {{example}}).status, FUNC_OK);
    EXPECT_EQ(windows().size(), 2U);
}

TEST_F(WindowFunctions, AFileThatIsNoExampleBundleFailsTheCallAndShowsNoWindow)
{
    EXPECT_EQ(call("_create_example_bundle_editor", {{broken}}).status, FUNC_FAILED);
    EXPECT_THAT(windows(), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(failure("_create_example_bundle_editor", "bad expected access")));
}

TEST_F(WindowFunctions, TheExamplesBundleEditorOpensOnANewBarrelAndOnAFile)
{
    EXPECT_EQ(call("_create_examples_bundle_editor", {}).status, FUNC_OK);
    EXPECT_EQ(call("_create_examples_bundle_editor", {{barrel}}).status, FUNC_OK);
    EXPECT_EQ(windows().size(), 2U);
}

TEST_F(WindowFunctions, AFileThatIsNoBarrelFailsTheCallAndShowsNoWindow)
{
    EXPECT_EQ(call("_create_examples_bundle_editor", {{broken}}).status, FUNC_FAILED);
    EXPECT_THAT(windows(), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(failure("_create_examples_bundle_editor", "bad expected access")));
}

TEST_F(WindowFunctions, TheScriptableBundleEditorOpensOnANewBundle)
{
    EXPECT_EQ(call("_proto_scriptable_bundle_editor", {}).status, FUNC_OK);
    EXPECT_EQ(windows().size(), 1U);
}

TEST_F(WindowFunctions, AFileThatIsNoScriptableBundleFailsTheCallAndShowsNoWindow)
{
    EXPECT_EQ(call("_proto_scriptable_bundle_editor", {{broken}}).status, FUNC_FAILED);
    EXPECT_THAT(windows(), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(failure("_proto_scriptable_bundle_editor", "bad expected access")));
}

TEST_P(NewBundleFunction, OpensOnANewBundleWhenThereIsMoreThanOneText)
{
    EXPECT_EQ(call(GetParam(), {{broken, broken}}).status, FUNC_OK);
    EXPECT_EQ(windows().size(), 1U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Editing, NewBundleFunction,
                         testing::Values("_create_example_bundle_editor", "_create_examples_bundle_editor",
                                         "_proto_scriptable_bundle_editor"),
                         [](const auto& parameter) { return std::string{parameter.param}.substr(1); });

TEST_F(WindowFunctions, TheBundleViewerShowsAPackage)
{
    EXPECT_EQ(call("_bundle_viewer", {{example}}).status, FUNC_OK);
    EXPECT_THAT(windows(), ElementsAre("QTreeView"));
}

TEST_F(WindowFunctions, TheBundleViewerFailsOnAFileThatCannotBeRead)
{
    EXPECT_EQ(call("_bundle_viewer", {{broken}}).status, FUNC_FAILED);
    EXPECT_THAT(windows(), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(failure("_bundle_viewer", "bad expected access")));
}

TEST_F(WindowFunctions, TheBundleViewerFailsOnAPackageThatOpensAndWhosePartsCannotBeRead)
{
    for (const char* const name : {"xml-relationships-text.zip", "xml-content-types-text.zip"}) {
        const LogCapture logOfTheCall;
        const std::filesystem::path package = std::filesystem::path{HOLLERWICK_BROKEN_PACKAGES} / name;
        const std::u8string path = package.u8string();
        ASSERT_TRUE(System::IO::OpcPackaging::open_package({path.data(), path.size()})) << name;
        EXPECT_EQ(call("_bundle_viewer", {{package.string()}}).status, FUNC_FAILED) << name;
        EXPECT_THAT(windows(), IsEmpty()) << name;
        EXPECT_THAT(logOfTheCall.lines(), ElementsAre(failure("_bundle_viewer", "bad expected access"))) << name;
    }
}

TEST_F(WindowFunctions, TheBundleViewerFailsWithoutAPath)
{
    EXPECT_EQ(call("_bundle_viewer", {{}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre(failure("_bundle_viewer", "argument index out of range")));
}

TEST_F(WindowFunctions, ThePackageBrowserShowsAnEmptyTreeForAFileThatCannotBeRead)
{
    EXPECT_EQ(call("_proto_package_browser", {{broken}}).status, FUNC_OK);
    EXPECT_THAT(windows(), ElementsAre("QTreeView"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(WindowFunctions, ThePackageBrowserDoesNotAskWhenItsArgumentIsTheEmptyText)
{
    EXPECT_EQ(call("_proto_package_browser", {{""}}).status, FUNC_OK);
    EXPECT_THAT(windows(), ElementsAre("QTreeView"));
}

TEST_P(OpeningFunction, AsksWithoutAnArgumentAndOpensNothingWhenTheUserCancels)
{
    cancelNextDialog();
    const CallResult result = call(GetParam(), {});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(cancelled, HasSubstr("Select"));
    EXPECT_THAT(windows(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_P(OpeningFunction, AsksAsWellWhenThereIsMoreThanOneText)
{
    cancelNextDialog();
    EXPECT_EQ(call(GetParam(), {{example, example}}).status, FUNC_OK);
    EXPECT_THAT(cancelled, HasSubstr("Select"));
}

INSTANTIATE_TEST_SUITE_P(Asking, OpeningFunction,
                         testing::Values("_proto_package_browser", "_proto_examples_browser2",
                                         "_proto_example_browser"),
                         [](const auto& parameter) { return std::string{parameter.param}.substr(1); });

TEST_F(WindowFunctions, TheExamplesBrowserShowsABarrel)
{
    EXPECT_EQ(call("_proto_examples_browser2", {{barrel}}).status, FUNC_OK);
    EXPECT_EQ(windows().size(), 1U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(WindowFunctions, TheExamplesBrowserIsEmptyForABarrelThatCannotBeOpenedAndTheLogSaysWhy)
{
    EXPECT_EQ(call("_proto_examples_browser2", {{broken}}).status, FUNC_OK);
    EXPECT_EQ(windows().size(), 1U);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("error [ui] ")));
}

TEST_F(WindowFunctions, ThePrototypeBrowserShowsADirectory)
{
    EXPECT_EQ(call("_proto_example_browser", {{folder.path()}}).status, FUNC_OK);
    EXPECT_EQ(windows().size(), 1U);
}

TEST_F(WindowFunctions, ThePrototypeBrowserFailsOnADirectoryThatIsNotThere)
{
    EXPECT_EQ(call("_proto_example_browser", {{folder / "not there"}}).status, FUNC_FAILED);
    EXPECT_THAT(windows(), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("_proto_example_browser failed: ")));
}

TEST_F(WindowFunctions, TheExampleBrowserGivesNoResultWhenTheUserClosesIt)
{
    cancelNextDialog();
    const CallResult result = call("_example_browser_2", {{barrel}, {folder / "designs"}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder / "designs"));
}

TEST_F(WindowFunctions, TheExampleBrowserFailsWithoutATargetDirectory)
{
    EXPECT_EQ(call("_example_browser_2", {{barrel}, {}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre(failure("_example_browser_2", "argument index out of range")));
}

TEST_F(WindowFunctions, TheExampleBrowserOpensWithoutABarrel)
{
    cancelNextDialog();
    EXPECT_EQ(call("_example_browser_2", {{}, {folder / "designs"}}).status, FUNC_OK);
}

class WindowsOfAModuleThatGoes : public testing::Test
{
protected:
    static std::string barrelWithAPage(const TemporaryFolder& folder)
    {
        const LoadedModule module;
        const std::string example = folder / "example.kvbdl.zip";
        const std::string barrel = folder / "barrel.kvexs";
        call("_create_example", {{folder.write("design/readme.html", "<p>page</p>")}, {example}, {"T"}});
        call("_create_examples", {{example}, {barrel}});
        return barrel;
    }

    /// Loads the module, calls a function with `argument`, draws its window, closes it and unloads the module.
    static void showOnce(const std::string& name, const std::string& argument)
    {
        {
            const LoadedModule module;
            EXPECT_EQ(call(name, {{argument}}).status, FUNC_OK);
            QCoreApplication::processEvents();
            closeAllWindows();
        }
        EXPECT_FALSE(isModuleMapped()) << name;
    }
};

TEST_F(WindowsOfAModuleThatGoes, APageIsShownAgainAfterTheModuleWasLoadedAgain)
{
    const TemporaryFolder folder;
    const std::string barrel = barrelWithAPage(folder);
    for (int round = 0; round < 3; ++round)
        showOnce("_proto_examples_browser2", barrel);
}

TEST_F(WindowsOfAModuleThatGoes, AModuleWithoutTheOneForPagesBesideItShowsThemAsText)
{
    const TemporaryFolder folder;
    const std::string barrel = barrelWithAPage(folder);
    std::filesystem::copy_file(moduleFile(), folder / "hollerwick.so");
    const LoadedModule module{folder / "hollerwick.so"};
    EXPECT_EQ(call("_proto_examples_browser2", {{barrel}}).status, FUNC_OK);
    ASSERT_EQ(QApplication::topLevelWidgets().size(), 1);
    EXPECT_NE(QApplication::topLevelWidgets().front()->findChild<QTextBrowser*>(), nullptr);
    closeAllWindows();
}

TEST_F(WindowsOfAModuleThatGoes, AFilterIsCheckedAgainAfterTheModuleWasLoadedAgain)
{
    const TemporaryFolder folder;
    for (int round = 0; round < 3; ++round) {
        const LoadedModule module;
        bool isChecked = false;
        QTimer::singleShot(0, [&isChecked] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            QAbstractItemModel* const filters = dialog->findChild<QTreeView*>(QStringLiteral("filterView"))->model();
            isChecked = filters->setData(filters->index(0, 0, filters->index(0, 0)), Qt::Checked, Qt::CheckStateRole);
            dialog->reject();
        });
        EXPECT_EQ(call("_example_browser_2", {{}, {folder / "designs"}}).status, FUNC_OK);
        EXPECT_TRUE(isChecked);
        closeAllWindows();
    }
}

TEST_F(WindowsOfAModuleThatGoes, NothingThatQtKeepsPointsIntoTheModule)
{
    const TemporaryFolder folder;
    const std::string example = folder / "example.kvbdl.zip";
    {
        const LoadedModule module;
        call("_create_example", {{folder.write("top.kvsch", "")}, {example}, {"T"}});
    }
    for (const char* name : {"_create_example_bundle_editor", "_bundle_viewer", "_proto_package_browser"})
        showOnce(name, example);
    // the style keeps the item that it has drawn last until it draws another one
    QTreeWidget tree;
    tree.addTopLevelItem(new QTreeWidgetItem{{QStringLiteral("text")}});
    EXPECT_FALSE(tree.grab().isNull());
}

} // namespace
