#include "tests/windows/all_windows.h"

#include "host/shell/console_window.h"
#include "host/shell/function_call.h"
#include "host/shell/script_editor.h"
#include "tests/support/modal_driver.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTreeView>

using HostShell::callByName;
using HostShell::ConsoleWindow;

using Look = std::function<void(QWidget&)>;

namespace {

const std::string longTitle =
    "A title that goes on and on, because whoever wrote it wanted to tell everything about the "
    "design in one single line, down to the last resistor, Größe and Ω included, and more";

void create(const char* function, const std::vector<std::vector<std::string>>& arguments)
{
    const auto outcome = callByName(function, arguments);
    ASSERT_EQ(outcome.result.results, std::vector<std::string>{"OK"}) << outcome.failure;
}

void withConsole(const Look& look)
{
    ConsoleWindow window;
    window.show();
    settle(window);
    look(window);
}

/// Lets the console open a dialog and hands that over.
void withDialogOfConsole(const std::function<void(ConsoleWindow&)>& open, const Look& look)
{
    withConsole([&](QWidget& window) {
        ModalDriver driver;
        driver.when<QDialog>([&](QDialog& dialog) {
            settle(dialog);
            look(dialog);
            dialog.reject();
        });
        open(static_cast<ConsoleWindow&>(window));
    });
}

void withMenuEntryOfExampleEditor(const char* entry, const Look& look, const Samples& samples)
{
    withWindowOf("_create_example_bundle_editor", {{samples.example()}}, [&](QWidget& window) {
        auto& tree = visibleChild<QTreeView>(window);
        ModalDriver driver;
        driver.when<QMenu>([entry](QMenu& menu) { chooseEntry(menu, QString::fromLatin1(entry)); });
        driver.when<QDialog>([&](QDialog& dialog) {
            settle(dialog);
            look(dialog);
            dialog.reject();
        });
        rightClick(*tree.viewport(), tree.visualRect(tree.model()->index(0, 0)).center());
    });
}

void browsePage(const Samples& samples, const Look& look)
{
    withDialogOf("_example_browser_2", {{samples.barrel()}, {samples.directory() + "/new"}}, look);
}

void configurePage(const Samples& samples, const Look& look)
{
    withDialogOf("_example_browser_2", {{samples.barrel()}, {samples.directory()}}, [&](QWidget& dialog) {
        auto* list = dialog.findChild<QListView*>(QStringLiteral("examplesView"));
        QTest::keyClick(list, Qt::Key_End);
        QTest::keyClick(list, Qt::Key_Return);
        settle(dialog);
        look(dialog);
    });
}

void examplesEditor(const Samples& samples, const Look& look)
{
    withWindowOf("_create_examples_bundle_editor", {{samples.barrel()}}, [&](QWidget& window) {
        QTest::keyClick(&visibleChild<QListView>(window), Qt::Key_Down);
        look(window);
    });
}

void examplesEditorSecondTab(const Samples& samples, const Look& look)
{
    withWindowOf("_create_examples_bundle_editor", {{samples.barrel()}}, [&](QWidget& window) {
        QTest::keyClick(&visibleChild<QTabBar>(window), Qt::Key_Right);
        look(window);
    });
}

void examplesBrowser(const Samples& samples, const Look& look)
{
    withWindowOf("_proto_examples_browser2", {{samples.barrel()}}, [&](QWidget& window) {
        QTest::keyClick(&visibleChild<QTreeView>(window), Qt::Key_Down);
        settle(window);
        look(window);
    });
}

} // namespace

QWidget* anyOpenWindow()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowType() != Qt::ToolTip)
            return widget;
    }
    return nullptr;
}

Samples::Samples()
{
    auto plugin = HostShell::PluginLibrary::load({});
    if (!plugin)
        throw std::runtime_error{plugin.error().text};
    m_plugin = *std::move(plugin);
    const std::string designs = std::string{SAMPLES_DIRECTORY} + "/designs/";
    const std::string design = designs + "rc_lowpass/";
    const std::vector<std::string> files{design + "rc_lowpass.kvsch", design + "documentation.html",
                                         design + "data/response.csv"};
    create("_create_example", {files, {example()}, {"RC low-pass"}, {"First order"}, {"Kelvaris"}, {"filter"}});
    create("_create_example", {files, {path("long.kvbdl.zip")}, {longTitle}, {longTitle}, {}, {"filter", "long"}});
    create("_create_examples", {{example(), path("long.kvbdl.zip")}, {barrel()}});
}

Samples::~Samples()
{
    // windows that were closed go before the plug-in's code does
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void PrintTo(const WindowCase& window, std::ostream* out)
{
    *out << window.name;
}

void settle(QWidget& window)
{
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    QApplication::setActiveWindow(&window);
    QCoreApplication::processEvents();
}

void withWindowOf(const char* function, const std::vector<std::vector<std::string>>& arguments, const Look& look)
{
    ASSERT_EQ(callByName(function, arguments).result.status, Kelvaris::FUNC_OK);
    const QPointer<QWidget> window = anyOpenWindow();
    ASSERT_NE(window, nullptr);
    settle(*window);
    look(*window);
    if (window != nullptr)
        window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void withDialogOf(const char* function, const std::vector<std::vector<std::string>>& arguments, const Look& look)
{
    ModalDriver driver;
    driver.when<QDialog>([&look](QDialog& dialog) {
        settle(dialog);
        look(dialog);
        dialog.reject();
    });
    callByName(function, arguments);
}

const std::vector<WindowCase>& allWindows()
{
    static const std::vector<WindowCase> windows{
        {"BrowsePage", browsePage},
        {"ConfigurePage", configurePage},
        {"ExampleEditor",
         [](const Samples& samples, const Look& look) {
             withWindowOf("_create_example_bundle_editor", {{samples.example()}}, look);
         }},
        {"NewExampleEditor",
         [](const Samples&, const Look& look) { withWindowOf("_create_example_bundle_editor", {}, look); }},
        {"ExamplesEditor", examplesEditor},
        {"ExamplesEditorSecondTab", examplesEditorSecondTab},
        {"ScriptableEditor",
         [](const Samples&, const Look& look) { withWindowOf("_proto_scriptable_bundle_editor", {}, look); }},
        {"BundleViewer",
         [](const Samples& samples, const Look& look) { withWindowOf("_bundle_viewer", {{samples.example()}}, look); }},
        {"PackageBrowser",
         [](const Samples& samples, const Look& look) {
             withWindowOf("_proto_package_browser", {{samples.example()}}, look);
         }},
        {"ExamplesBrowser", examplesBrowser},
        {"PrototypeBrowser",
         [](const Samples& samples, const Look& look) {
             withWindowOf("_proto_example_browser", {{samples.directory()}}, look);
         }},
        {"Console", [](const Samples&, const Look& look) { withConsole(look); }},
        {"QuestionAboutUnsavedScript",
         [](const Samples&, const Look& look) {
             withDialogOfConsole(
                 [](ConsoleWindow& window) {
                     QTest::keyClicks(&visibleChild<HostShell::ScriptEditor>(window), QStringLiteral("x"));
                     window.close();
                 },
                 look);
         }},
        {"WarningOfConsole",
         [](const Samples&, const Look& look) {
             withDialogOfConsole([](ConsoleWindow& window) { window.openFile(QStringLiteral("/not/there.kvexs")); },
                                 look);
         }},
        {"FileDialogOfConsole",
         [](const Samples&, const Look& look) {
             withDialogOfConsole([](ConsoleWindow& window) { QTest::keySequence(&window, QKeySequence::Open); }, look);
         }},
        {"DirectoryNameDialog", [](const Samples& samples,
                                   const Look& look) { withMenuEntryOfExampleEditor("Add Directory", look, samples); }},
        {"AddFileDialog",
         [](const Samples& samples, const Look& look) { withMenuEntryOfExampleEditor("Add File", look, samples); }},
    };
    return windows;
}
