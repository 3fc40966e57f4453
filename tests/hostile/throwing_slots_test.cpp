#include "tests/hostile/hostile_windows.h"
#include "tests/script/loaded_module.h"
#include "tests/support/log_capture.h"
#include "tests/support/modal_driver.h"
#include "tests/support/model_dump.h"
#include "tests/support/noise.h"
#include "tests/support/temporary_folder.h"

#include <QtTest/QTest>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QTreeView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What a slot of a window throws, from causes that come up in use, ends in one line of the log; the window goes on.

namespace fs = std::filesystem;
using Kelvaris::FUNC_OK;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

/// Half of a character, as a broken clipboard pastes it.
const QString noUnicode{QChar{0xD800}};

class ThrowingSlots : public testing::Test
{
protected:
    ThrowingSlots()
    {
        const fs::path primary = folder.write("design/top.kvsch", noise(200'000));
        (void)call("_create_example", {{primary}, {example}, {"An example"}});
        (void)call("_create_examples", {{example}, {barrel}});
    }

    ~ThrowingSlots() override { closeAllWindows(); }

    static QWidget& open(const std::string& function, const std::vector<std::string>& files)
    {
        EXPECT_EQ(call(function, {files}).status, FUNC_OK);
        return *visibleWindows().at(0);
    }

    /// Takes an entry of the context menu of a row; `answers` tells what to do with the dialog behind it.
    static void choose(QTreeView& view, const QModelIndex& row, const QString& entry,
                       const std::function<void(ModalDriver&)>& answers)
    {
        ModalDriver driver;
        driver.when<QMenu>([&](QMenu& menu) { chooseEntry(menu, entry); });
        answers(driver);
        view.expandAll();
        rightClick(*view.viewport(), view.visualRect(row).center());
        EXPECT_TRUE(driver.isDone());
    }

    static void addNoUnicodeDirectory(QTreeView& content)
    {
        choose(content, content.model()->index(0, 0), QStringLiteral("Add Directory"), [](ModalDriver& driver) {
            driver.when<QInputDialog>([](QInputDialog& dialog) {
                dialog.setTextValue(noUnicode);
                dialog.accept();
            });
        });
    }

    /// Clicks Save and gives `path` to the dialog; `answers` what comes behind it.
    static void save(QWidget& window, const QString& path, const std::function<void(ModalDriver&)>& answers = {})
    {
        ModalDriver driver;
        driver.when<QFileDialog>([&](QFileDialog& dialog) { chooseFile(dialog, path); });
        if (answers)
            answers(driver);
        QTest::mouseClick(window.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save), Qt::LeftButton);
        EXPECT_TRUE(driver.isDone());
    }

    QString below(const char* name) const { return QString::fromStdString((folder / name).string()); }

    static auto oneLine() { return ElementsAre(StartsWith("error [ui] ")); }

    LoadedModule module;
    TemporaryFolder folder;
    fs::path example = folder / "example.kvbdl.zip";
    fs::path barrel = folder / "barrel.kvexs";
    LogCapture log;
};

} // namespace

TEST_F(ThrowingSlots, APropertyThatIsNoUnicodeIsLoggedByTheEditorAndTheBundleIsSavedWithoutIt)
{
    QWidget& window = open("_create_example_bundle_editor", {example});
    auto& properties = *window.findChild<QTableView*>();
    properties.edit(properties.model()->index(0, 1));
    auto* const cell = properties.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    cell->setText(noUnicode);
    QTest::keyClick(cell, Qt::Key_Return);
    QCoreApplication::processEvents(); // the commit is queued
    EXPECT_THAT(log.lines(), oneLine());
    save(window, below("saved.kvbdl.zip"));
    EXPECT_TRUE(fs::exists(folder / "saved.kvbdl.zip"));
    EXPECT_THAT(log.lines(), oneLine());
}

/// Nothing throws here: the bundle refuses the file, and saves what it has.
TEST_F(ThrowingSlots, AFileInADirectoryWhoseNameIsNoUnicodeIsRefusedAndTheRestIsSaved)
{
    QWidget& window = open("_create_example_bundle_editor", {example});
    auto& content = *window.findChild<QTreeView*>();
    addNoUnicodeDirectory(content);
    choose(content, rowNamed(*content.model(), noUnicode), QStringLiteral("Add File"), [this](ModalDriver& driver) {
        driver.when<QFileDialog>([this](QFileDialog& dialog) { chooseFile(dialog, below("design/top.kvsch")); });
    });
    save(window, below("saved.kvbdl.zip"));
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(call("_unpack_content_bundle", {{folder / "saved.kvbdl.zip"}, {folder / "out"}}).results.at(0), "OK");
    EXPECT_EQ(std::distance(fs::directory_iterator{folder / "out/content"}, {}), 1);
}

TEST_F(ThrowingSlots, APrimaryFileWhosePathIsNoUnicodeIsLoggedAndAnotherOneIsTaken)
{
    QWidget& window = open("_create_example_bundle_editor", {});
    auto& content = *window.findChild<QTreeView*>();
    const auto addFileTo = [&](const QModelIndex& directory, const char* name) {
        choose(content, directory, QStringLiteral("Add File"), [&](ModalDriver& driver) {
            driver.when<QFileDialog>([&](QFileDialog& dialog) { chooseFile(dialog, below(name)); });
        });
    };
    const auto makePrimary = [&](const char* name) {
        choose(content, rowNamed(*content.model(), QString::fromUtf8(name)), QStringLiteral("Set Primary"),
               [](ModalDriver&) {});
    };
    const QPushButton& saves = *window.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save);
    folder.write("good.kvsch", "good");
    folder.write("bad.kvsch", "bad");
    addFileTo(content.model()->index(0, 0), "good.kvsch");
    addNoUnicodeDirectory(content);
    addFileTo(rowNamed(*content.model(), noUnicode), "bad.kvsch");

    makePrimary("bad.kvsch");
    EXPECT_THAT(log.lines(), oneLine());
    EXPECT_FALSE(saves.isEnabled());
    makePrimary("good.kvsch");
    EXPECT_TRUE(saves.isEnabled());
    save(window, below("saved.kvbdl.zip"));
    EXPECT_EQ(call("_unpack_content_bundle", {{folder / "saved.kvbdl.zip"}, {folder / "out"}}).results.at(0), "OK");
    EXPECT_THAT(log.lines(), oneLine());
}

TEST_F(ThrowingSlots, AScriptThatIsNoUnicodeIsLoggedAndTheNextSaveSaves)
{
    QWidget& window = open("_proto_scriptable_bundle_editor", {});
    auto* const script = window.findChild<QTextEdit*>();
    script->setPlainText(noUnicode);
    save(window, below("script.kvsbd.zip"));
    EXPECT_THAT(log.lines(), oneLine());
    EXPECT_FALSE(fs::exists(folder / "script.kvsbd.zip"));
    script->setPlainText(QStringLiteral("run();"));
    save(window, below("script.kvsbd.zip"));
    EXPECT_TRUE(fs::exists(folder / "script.kvsbd.zip"));
    EXPECT_THAT(log.lines(), oneLine());
}

TEST_F(ThrowingSlots, AnExampleThatWasCutShortBehindTheBrowserIsLoggedAndLeavesNothing)
{
    QWidget& window = open("_proto_examples_browser2", {barrel});
    fs::resize_file(barrel, fs::file_size(barrel) / 2);
    fs::create_directory(folder / "out");
    auto& list = *window.findChild<QTreeView*>();
    choose(list, list.model()->index(0, 0), QStringLiteral("Start new design with..."), [this](ModalDriver& driver) {
        driver.when<QFileDialog>([this](QFileDialog& dialog) { chooseFile(dialog, below("out")); });
    });
    EXPECT_THAT(log.lines(), oneLine());
    EXPECT_TRUE(fs::is_empty(folder / "out"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ThrowingSlots, AnExampleWhoseFileWasRemovedBehindTheBrowserIsUnpackedAllTheSame)
{
    QWidget& window = open("_proto_examples_browser2", {barrel});
    fs::remove(barrel);
    fs::create_directory(folder / "out");
    auto& list = *window.findChild<QTreeView*>();
    choose(list, list.model()->index(0, 0), QStringLiteral("Start new design with..."), [this](ModalDriver& driver) {
        driver.when<QFileDialog>([this](QFileDialog& dialog) { chooseFile(dialog, below("out")); });
    });
    EXPECT_EQ(readFile(folder / "out/content/top.kvsch"), noise(200'000));
    EXPECT_THAT(log.lines(), IsEmpty());
}

/// A failure that the window expects is told in a box, and is no line of the log.
TEST_F(ThrowingSlots, ABundleThatWasCutShortBehindItsEditorIsNotSavedAndTheUserIsTold)
{
    QWidget& window = open("_create_example_bundle_editor", {example});
    fs::resize_file(example, fs::file_size(example) / 2);
    QString told;
    save(window, below("saved.kvbdl.zip"), [&](ModalDriver& driver) {
        driver.when<QMessageBox>([&](QMessageBox& box) {
            told = box.text();
            clickButton(box, QStringLiteral("OK"));
        });
    });
    EXPECT_FALSE(told.isEmpty());
    EXPECT_FALSE(fs::exists(folder / "saved.kvbdl.zip"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(ThrowingSlots, APlaceThatCannotBeLookedAtIsLoggedByTheDialogThatStartsADesign)
{
    ModalDriver driver;
    driver.when<QDialog>([&](QDialog& dialog) {
        QTest::keyClick(dialog.findChild<QWidget*>(QStringLiteral("examplesView")), Qt::Key_Down);
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("nextButton")), Qt::LeftButton);
        dialog.findChild<QLineEdit*>(QStringLiteral("targetDirectoryBox"))
            ->setText(below(std::string(300, 'x').c_str()));
        EXPECT_THAT(log.lines(), oneLine());
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(call("_example_browser_2", {{barrel}, {folder / "designs"}}).status, FUNC_OK);
}

TEST_F(ThrowingSlots, ABarrelThatWasCutShortBehindTheDialogIsToldToTheUser)
{
    QString told;
    ModalDriver driver;
    driver.when<QDialog>([&](QDialog& dialog) {
        fs::resize_file(barrel, fs::file_size(barrel) / 2);
        QTest::keyClick(dialog.findChild<QWidget*>(QStringLiteral("examplesView")), Qt::Key_Down);
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("nextButton")), Qt::LeftButton);
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("createButton")), Qt::LeftButton);
        dialog.reject();
    });
    driver.when<QMessageBox>([&](QMessageBox& box) {
        told = box.text();
        clickButton(box, QStringLiteral("OK"));
    });
    EXPECT_EQ(call("_example_browser_2", {{barrel}, {folder / "designs"}}).status, FUNC_OK);
    EXPECT_THAT(told.toStdString(), StartsWith("Create example failed"));
    EXPECT_FALSE(fs::exists(folder / "designs/content"));
}
