// The console with the real plug-in: what it opens for a file or a menu entry.

#include "host/shell/console_window.h"
#include "host/shell/function_call.h"
#include "tests/support/modal_driver.h"
#include "tests/windows/all_windows.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>

#include <gmock/gmock.h>

namespace fs = std::filesystem;

using HostShell::ConsoleWindow;

namespace {

class ConsoleOpens : public testing::Test
{
protected:
    static void SetUpTestSuite() { samples = std::make_unique<Samples>(); }
    static void TearDownTestSuite() { samples.reset(); }

    ConsoleOpens()
    {
        m_console.show();
        settle(m_console);
    }

    ~ConsoleOpens() override
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            widget->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static std::vector<std::string> write(const char* function, const std::vector<std::vector<std::string>>& arguments)
    {
        return HostShell::callByName(function, arguments).result.results;
    }

    /// The class of the one window beside the console.
    std::string opened() const
    {
        std::string names;
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && widget != &m_console)
                names += widget->inherits("QTreeView") ? "QTreeView" : typeid(*widget).name();
        }
        return names;
    }

    void drop(const std::string& path)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
        QWidget* target = visibleChild<QPlainTextEdit>(m_console).viewport();
        QDragEnterEvent enter{QPoint{5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(target, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event{QPointF{5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(target, &event);
        QCoreApplication::processEvents();
    }

    QMenu& windowMenu()
    {
        for (const QAction* entry : visibleChild<QMenuBar>(m_console).actions()) {
            if (entry->text() == QStringLiteral("&Windows"))
                return *entry->menu();
        }
        throw std::runtime_error{"no menu of windows"};
    }

    /// Opens the menu with the keyboard, takes the entry, and answers the file dialogs that come.
    std::string openFromMenu(const char* entry, const std::vector<std::string>& answers)
    {
        ModalDriver driver;
        driver.when<QMenu>([entry](QMenu& menu) { chooseEntry(menu, QString::fromUtf8(entry)); });
        for (const std::string& answer : answers)
            driver.when<QFileDialog>(
                [answer](QFileDialog& dialog) { chooseFile(dialog, QString::fromStdString(answer)); });
        QTest::keyClick(&m_console, Qt::Key_W, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&driver] { return driver.isDone(); }, 20'000));
        QCoreApplication::processEvents();
        return opened();
    }

    static inline std::unique_ptr<Samples> samples;
    ConsoleWindow m_console;
};

} // namespace

TEST_F(ConsoleOpens, AnExampleThatIsDroppedInItsEditor)
{
    drop(samples->example());
    EXPECT_THAT(opened(), testing::HasSubstr("ExampleBundleEditor"));
}

TEST_F(ConsoleOpens, ABarrelThatIsDroppedInItsPanes)
{
    drop(samples->barrel());
    EXPECT_THAT(opened(), testing::HasSubstr("ExamplesBundleEditor"));
}

TEST_F(ConsoleOpens, AnyOtherPackageThatIsDroppedInTheViewer)
{
    const std::string id = write("_schematic_bundle_create", {}).front();
    const std::string file = samples->path("schematics.zip");
    write("_schematic_bundle_set_root",
          {{std::string{SAMPLES_DIRECTORY} + "/designs/rc_lowpass/rc_lowpass.kvsch"}, {id}});
    write("_schematic_bundle_write", {{file}, {id}});
    write("_schematic_bundle_close", {{id}});
    drop(file);
    EXPECT_EQ(opened(), "QTreeView");
}

TEST_F(ConsoleOpens, ADirectoryThatIsDroppedInTheBrowserOfLooseExamples)
{
    drop(samples->directory());
    EXPECT_THAT(opened(), testing::HasSubstr("PrototypeExamplesWidget"));
}

TEST_F(ConsoleOpens, NothingForAFileThatIsNoBundleAndTellsWhy)
{
    QString told;
    ModalDriver driver;
    driver.when<QMessageBox>([&told](QMessageBox& box) {
        told = box.text();
        QTest::keyClick(&box, Qt::Key_Return);
    });
    drop(std::string{SAMPLES_DIRECTORY} + "/README.md");
    EXPECT_TRUE(driver.isDone());
    EXPECT_THAT(told.toStdString(), testing::HasSubstr("README.md"));
    EXPECT_EQ(opened(), "");
}

TEST_F(ConsoleOpens, ABarrelFromTheMenuInItsBrowser)
{
    EXPECT_THAT(openFromMenu("Browse a barrel of examples…", {samples->barrel()}),
                testing::HasSubstr("ExamplesBrowser"));
}

TEST_F(ConsoleOpens, ANewExampleFromTheMenu)
{
    EXPECT_THAT(openFromMenu("New example", {}), testing::HasSubstr("ExampleBundleEditor"));
}

TEST_F(ConsoleOpens, ABarrelFromTheMenuInItsPanes)
{
    EXPECT_THAT(openFromMenu("Show the panes of a barrel…", {samples->barrel()}),
                testing::HasSubstr("ExamplesBundleEditor"));
}

TEST_F(ConsoleOpens, AScriptableBundleFromTheMenu)
{
    EXPECT_THAT(openFromMenu("New scriptable bundle", {}), testing::HasSubstr("ScriptableBundleEditor"));
}

TEST_F(ConsoleOpens, AnExampleFromTheMenuInItsEditor)
{
    EXPECT_THAT(openFromMenu("Edit an example…", {samples->example()}), testing::HasSubstr("ExampleBundleEditor"));
}

TEST_F(ConsoleOpens, ADirectoryOfExamplesFromTheMenu)
{
    EXPECT_THAT(openFromMenu("Browse a directory of examples…", {samples->directory()}),
                testing::HasSubstr("PrototypeExamplesWidget"));
}

TEST_F(ConsoleOpens, ThePartsOfAPackageFromTheMenu)
{
    EXPECT_EQ(openFromMenu("View the parts of a package…", {samples->example()}), "QTreeView");
}

TEST_F(ConsoleOpens, PartsAndRelationshipsOfAPackageFromTheMenu)
{
    EXPECT_EQ(openFromMenu("View parts and relationships of a package…", {samples->example()}), "QTreeView");
}

TEST_F(ConsoleOpens, TheDialogForANewDesignFromTheMenu)
{
    QString title;
    ModalDriver driver;
    driver.when<QMenu>([](QMenu& menu) { chooseEntry(menu, QStringLiteral("New design from examples…")); });
    driver.when<QFileDialog>(
        [](QFileDialog& dialog) { chooseFile(dialog, QString::fromStdString(samples->barrel())); });
    driver.when<QFileDialog>(
        [](QFileDialog& dialog) { chooseFile(dialog, QString::fromStdString(samples->directory())); });
    driver.when<QDialog>([&title](QDialog& dialog) {
        title = dialog.objectName();
        dialog.reject();
    });
    QTest::keyClick(&m_console, Qt::Key_W, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&driver] { return driver.isDone(); }, 20'000));
    EXPECT_EQ(title, QStringLiteral("ExampleBrowserDialog"));
}

TEST_F(ConsoleOpens, EveryFunctionThatShowsAWindowHasAnEntry)
{
    int entries = 0;
    for (const QAction* entry : windowMenu().actions()) {
        EXPECT_TRUE(entry->isSeparator() || entry->isEnabled()) << entry->text().toStdString();
        entries += entry->isSeparator() ? 0 : 1;
    }
    EXPECT_EQ(entries, 10);
}
