// Each window does its work under nothing but keys, which go where a keyboard would send them.

#include "host/shell/function_call.h"
#include "host/shell/key_typing.h"
#include "host/shell/typed_keys.h"
#include "tests/support/modal_driver.h"
#include "tests/windows/all_windows.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

class Keyboard : public testing::Test
{
protected:
    static void SetUpTestSuite() { samples = std::make_unique<Samples>(); }
    static void TearDownTestSuite() { samples.reset(); }

    /// "Tab 'text' Return" into the window that has the keyboard.
    static void type(const QString& keys)
    {
        const auto parsed = HostShell::parseKeys(keys);
        ASSERT_TRUE(parsed) << parsed.error().text;
        for (const auto& typed : *parsed) {
            for (const auto& press : typed.presses) {
                HostShell::typeKey(*frontWindow(), press);
                // a cell takes its text a moment after Return
                QCoreApplication::processEvents();
            }
        }
    }

    /// Answers the file dialog that comes next, by keys.
    static void answerFile(ModalDriver& driver, const fs::path& path)
    {
        driver.when<QFileDialog>([path](QFileDialog& dialog) {
            settle(dialog);
            auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            name->setFocus();
            name->clear();
            type(QLatin1Char{'"'} + QString::fromStdString(path.string()) + QLatin1Char{'"'});
            if (QWidget* proposals = QApplication::activePopupWidget())
                proposals->close();
            type(QStringLiteral("Return"));
        });
    }

    /// Without a window manager no window becomes active when the one before is closed.
    static QWidget* frontWindow()
    {
        for (QWidget* window :
             {QApplication::activePopupWidget(), QApplication::activeModalWidget(), QApplication::activeWindow()}) {
            if (window != nullptr && window->isVisible())
                return window;
        }
        return anyOpenWindow();
    }

    static fs::path inFolder(const char* name) { return fs::path{samples->directory()} / name; }

    static inline std::unique_ptr<Samples> samples;
};

} // namespace

TEST_F(Keyboard, StartsADesignFromAnExample)
{
    const fs::path place = inFolder("designs by keys");
    ModalDriver driver;
    driver.when<QDialog>([](QDialog& dialog) {
        settle(dialog);
        type(QStringLiteral("'RC low' Tab Tab Down Return Tab Tab Tab Space"));
    });
    HostShell::callByName("_example_browser_2", {{samples->barrel()}, {place.string()}});
    EXPECT_TRUE(fs::exists(place / "RC low-pass/content/rc_lowpass.kvsch"));
}

TEST_F(Keyboard, FillsAnExampleAndSavesIt)
{
    const fs::path saved = inFolder("by keys.kvbdl.zip");
    const fs::path design = fs::path{SAMPLES_DIRECTORY} / "designs/rc_lowpass/rc_lowpass.kvsch";
    withWindowOf("_create_example_bundle_editor", {}, [&](QWidget& window) {
        ModalDriver driver;
        visibleChild<QTreeView>(window).setFocus();
        driver.when<QMenu>([](QMenu& menu) { chooseEntry(menu, QStringLiteral("Add File")); });
        answerFile(driver, design);
        type(QStringLiteral("Home Menu"));
        EXPECT_TRUE(driver.isDone());
        type(QStringLiteral("Right Down"));
        driver.when<QMenu>([](QMenu& menu) { chooseEntry(menu, QStringLiteral("Set Primary")); });
        type(QStringLiteral("Menu"));
        EXPECT_TRUE(driver.isDone());
        answerFile(driver, saved);
        type(QStringLiteral("Tab Tab Space"));
    });
    EXPECT_TRUE(fs::exists(saved));
}

TEST_F(Keyboard, EditsAPropertyAndLeavesTheTable)
{
    withWindowOf("_create_example_bundle_editor", {{samples->example()}}, [](QWidget& window) {
        auto& table = visibleChild<QTableView>(window);
        table.setFocus();
        table.setCurrentIndex(table.model()->index(0, 1));
        type(QStringLiteral("F2 Ctrl+A 'By keys' Return Tab"));
        EXPECT_EQ(table.model()->index(0, 1).data().toString(), QStringLiteral("By keys"));
        EXPECT_NE(qobject_cast<QTreeView*>(QApplication::focusWidget()), nullptr);
    });
}

TEST_F(Keyboard, WalksThroughTheExamplesOfABarrel)
{
    withWindowOf("_create_examples_bundle_editor", {{samples->barrel()}}, [](QWidget& window) {
        auto* list = window.findChild<QListView*>(QStringLiteral("examplesList"));
        list->setFocus();
        const QPointer<QWidget> dialog{&window};
        type(QStringLiteral("Down"));
        EXPECT_NE(window.findChild<QTreeView*>(QStringLiteral("exampleContentView"))->model(), nullptr);
        type(QStringLiteral("Escape"));
        EXPECT_TRUE(dialog == nullptr || !dialog->isVisible());
    });
}

TEST_F(Keyboard, WritesAScriptableBundle)
{
    const fs::path saved = inFolder("by keys.kvsbd.zip");
    withWindowOf("_proto_scriptable_bundle_editor", {}, [&](QWidget& window) {
        visibleChild<QTextEdit>(window).setFocus();
        ModalDriver driver;
        answerFile(driver, saved);
        type(QStringLiteral("'print(1)' Tab Space"));
    });
    EXPECT_TRUE(fs::exists(saved));
}

TEST_F(Keyboard, OpensTheTreeOfAPackage)
{
    for (const char* viewer : {"_bundle_viewer", "_proto_package_browser"}) {
        withWindowOf(viewer, {{samples->example()}}, [viewer](QWidget& window) {
            auto& tree = dynamic_cast<QTreeView&>(window);
            type(QStringLiteral("Home"));
            while (!tree.model()->hasChildren(tree.currentIndex()) && tree.indexBelow(tree.currentIndex()).isValid())
                type(QStringLiteral("Down"));
            type(QStringLiteral("Right Right"));
            EXPECT_TRUE(tree.currentIndex().parent().isValid()) << viewer;
        });
    }
}

TEST_F(Keyboard, UnpacksAnExampleFromItsContextMenu)
{
    const fs::path place = inFolder("unpacked by keys");
    fs::create_directory(place);
    withWindowOf("_proto_examples_browser2", {{samples->barrel()}}, [&](QWidget& window) {
        visibleChild<QTreeView>(window).setFocus();
        type(QStringLiteral("Home"));
        ModalDriver driver;
        driver.when<QMenu>([](QMenu& menu) { chooseEntry(menu, QStringLiteral("Start new design with...")); });
        answerFile(driver, place);
        type(QStringLiteral("Menu"));
        EXPECT_TRUE(driver.isDone());
    });
    EXPECT_TRUE(fs::exists(place / "content/rc_lowpass.kvsch"));
}

TEST_F(Keyboard, SearchesAmongLooseExamples)
{
    withWindowOf("_proto_example_browser", {{samples->directory()}}, [](QWidget& window) {
        auto& tree = visibleChild<QTreeView>(window);
        tree.setFocus();
        type(QStringLiteral("Tab 'First'"));
        EXPECT_EQ(tree.model()->rowCount(), 1);
    });
}

TEST_F(Keyboard, OpensAWindowFromTheMenuOfTheConsole)
{
    const auto& windows = allWindows();
    const auto console = std::find_if(windows.begin(), windows.end(),
                                      [](const WindowCase& window) { return window.name == std::string{"Console"}; });
    console->withWindow(*samples, [](QWidget& window) {
        ModalDriver driver;
        answerFile(driver, samples->example());
        type(QStringLiteral("Alt+W V"));
        EXPECT_TRUE(driver.isDone());
        QTreeView* viewer = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            viewer = widget->isVisible() && viewer == nullptr ? qobject_cast<QTreeView*>(widget) : viewer;
        ASSERT_NE(viewer, nullptr);
        viewer->close();
        EXPECT_TRUE(window.isVisible());
    });
}
