#include "editors/example_bundle_editor.h"

#include "tests/editors/window_fixture.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;

namespace {

constexpr int createdRow = 2;
constexpr int keywordsRow = 6;
constexpr int titleRow = 13;
constexpr int manufacturerRow = 15;

class ExampleBundleEditorTest : public WindowFixture
{
protected:
    /// Opens the editor as the script function does and gives its window.
    ExampleBundleEditor& open(const std::optional<std::filesystem::path>& path = std::nullopt)
    {
        openExampleBundleEditor(path ? std::optional{pathOf(*path)} : std::nullopt);
        editor = shownWindow<ExampleBundleEditor>();
        content = editor->findChild<QTreeView*>();
        properties = editor->findChild<QTableView*>();
        requirements = editor->findChild<QListView*>();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(editor));
        return *editor;
    }

    void closeEditor()
    {
        editor->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::string requirementColours() const { return dump(*requirements->model(), {}, {{0}, {Qt::DecorationRole}}); }

    QModelIndex row(const QString& name) const
    {
        content->expandAll();
        return rowNamed(*content->model(), name);
    }

    void addDirectory(const QString& below, const QString& name)
    {
        chooseFromContextMenu(*content, row(below), QStringLiteral("Add Directory"),
                              [&](ModalDriver& driver) { answerDirectoryName(driver, name); });
    }

    void addFile(const QString& below, const std::filesystem::path& path)
    {
        chooseFromContextMenu(*content, row(below), QStringLiteral("Add File"),
                              [&](ModalDriver& driver) { answerFile(driver, path); });
    }

    /// Takes a file that is gone before the bundle reads it: the bundle refuses it, and its row is there all the same.
    void addLostFile(const char* name)
    {
        const auto path = folder.write(name, "soon gone");
        chooseFromContextMenu(
            *content, row(QStringLiteral("content")), QStringLiteral("Add File"), [path](ModalDriver& driver) {
                driver.when<QFileDialog>([path](QFileDialog& dialog) {
                    QObject::connect(&dialog, &QDialog::accepted, [path] { std::filesystem::remove(path); });
                    chooseFile(dialog, textOf(path));
                });
            });
        EXPECT_FALSE(std::filesystem::exists(path));
    }

    void setPrimary(const QString& name) { chooseFromContextMenu(*content, row(name), QStringLiteral("Set Primary")); }

    /// Edits a cell as a user does: the cell is made current, F2 opens it, Return commits.
    void typeProperty(int row, const QString& text)
    {
        properties->setCurrentIndex(properties->model()->index(row, 1));
        properties->setFocus();
        QTest::keyClick(properties, Qt::Key_F2);
        auto* const cell = properties->viewport()->findChild<QLineEdit*>();
        ASSERT_NE(cell, nullptr);
        cell->clear();
        QTest::keyClicks(cell, text);
        QTest::keyClick(cell, Qt::Key_Return);
        // the commit is queued, and then the view lets go of the closed editor
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QString property(int row) const { return properties->model()->index(row, 1).data().toString(); }

    ExampleBundleEditor* editor = nullptr;
    QTreeView* content = nullptr;
    QTableView* properties = nullptr;
    QListView* requirements = nullptr;
};

} // namespace

TEST_F(ExampleBundleEditorTest, WithoutAnArgumentShowsAnEmptyBundleTwoRedRowsAndADisabledSave)
{
    open();
    EXPECT_EQ(dump(*content->model()), "content\n");
    EXPECT_EQ(dump(*requirements->model()), "Bundle has content.\nBundle has primary file selected.\n");
    EXPECT_EQ(requirementColours(), "#ff0000\n#ff0000\n");
    EXPECT_FALSE(saveButton(*editor)->isEnabled());
}

TEST_F(ExampleBundleEditorTest, AnAddedFileTurnsTheFirstRowGreenAndLeavesSaveDisabledUntilThereIsAPrimaryFile)
{
    open();
    addFile(QStringLiteral("content"), folder.write("a.kvsch", "a"));
    EXPECT_EQ(requirementColours(), "#00ff00\n#ff0000\n");
    EXPECT_FALSE(saveButton(*editor)->isEnabled());
    setPrimary(QStringLiteral("a.kvsch"));
    EXPECT_EQ(requirementColours(), "#00ff00\n#00ff00\n");
    EXPECT_TRUE(saveButton(*editor)->isEnabled());
}

TEST_F(ExampleBundleEditorTest, AnExistingBundleWithContentAndPrimaryFileCanBeSavedAtOnce)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch", "sub/b.kvsch"}, "a.kvsch"));
    EXPECT_EQ(requirementColours(), "#00ff00\n#00ff00\n");
    EXPECT_TRUE(saveButton(*editor)->isEnabled());
}

TEST_F(ExampleBundleEditorTest, AnExistingBundleWithoutAPrimaryFileAsksForOneAgain)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}));
    EXPECT_EQ(requirementColours(), "#00ff00\n#ff0000\n");
    EXPECT_FALSE(saveButton(*editor)->isEnabled());
}

TEST_F(ExampleBundleEditorTest, APrimaryFileThatCannotBeReadIsNoneAndTheUserChoosesAnew)
{
    const std::filesystem::path packages = HOLLERWICK_BROKEN_PACKAGES;
    for (const char* cause : {"external", "dangling", "twice", "above"}) {
        open(packages / ("example-primary-file-" + std::string{cause} + ".zip"));
        EXPECT_EQ(requirementColours(), "#00ff00\n#ff0000\n") << cause;
        EXPECT_FALSE(saveButton(*editor)->isEnabled()) << cause;
        setPrimary(QStringLiteral("a.txt"));
        EXPECT_EQ(requirementColours(), "#00ff00\n#00ff00\n") << cause;
        EXPECT_TRUE(saveButton(*editor)->isEnabled()) << cause;
        closeEditor();
    }
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ExampleBundleEditorTest, APrimaryFileThatTheBundleRefusesMeetsTheRequirementAllTheSame)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}));
    addLostFile("lost.kvsch");
    setPrimary(QStringLiteral("lost.kvsch"));
    EXPECT_EQ(dump(*content->model(), {}, {{0}, {Qt::DisplayRole, Qt::DecorationRole}}),
              "content | -\n  a.kvsch | -\n  lost.kvsch | #ff0000\n");
    EXPECT_EQ(requirementColours(), "#00ff00\n#00ff00\n");
    EXPECT_TRUE(log.lines().empty());
    const auto path = folder / "saved.kvbdl.zip";
    saveAs(*editor, path);
    closeEditor();

    open(path);
    EXPECT_EQ(dump(*content->model()), "content\n  a.kvsch\n");
    EXPECT_EQ(requirementColours(), "#00ff00\n#ff0000\n");
}

TEST_F(ExampleBundleEditorTest, OnlyABundleWithoutAPrimaryFileTakesTheRequirementBack)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}, "a.kvsch"));
    addDirectory(QStringLiteral("content"), QStringLiteral("sub"));
    addFile(QStringLiteral("sub"), folder.write("b.kvsch", "b"));
    addLostFile("lost.kvsch");
    setPrimary(QStringLiteral("lost.kvsch"));
    typeProperty(titleRow, QStringLiteral("changed"));
    (void)failToSaveAs(*editor, folder / "missing directory/x.kvbdl.zip");
    saveAs(*editor, folder / "saved.kvbdl.zip");
    EXPECT_EQ(requirementColours(), "#00ff00\n#00ff00\n");
    const auto other = writeExample(folder, "y.kvbdl.zip", {"c.kvsch"}, "c.kvsch");
    editor->setBundle(std::make_unique<ExampleBundle>(ExampleBundle::open(pathOf(other)).value()));
    EXPECT_EQ(requirementColours(), "#00ff00\n#00ff00\n");
    editor->setBundle(std::make_unique<ExampleBundle>(ExampleBundle::create().value()));
    EXPECT_EQ(requirementColours(), "#ff0000\n#ff0000\n");
    EXPECT_FALSE(saveButton(*editor)->isEnabled());
}

TEST_F(ExampleBundleEditorTest, SetPrimaryOnAnotherPartMovesTheMarkAndTheRequirementStaysMet)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch", "b.kvsch"}, "a.kvsch"));
    setPrimary(QStringLiteral("b.kvsch"));
    EXPECT_EQ(dump(*content->model(), {}, {{0}, {Qt::DisplayRole, Qt::DecorationRole}}),
              "content | -\n  a.kvsch | -\n  b.kvsch | #ff0000\n");
    EXPECT_TRUE(saveButton(*editor)->isEnabled());
}

TEST_F(ExampleBundleEditorTest, AFileThatCannotBeOpenedFailsTheCallAndShowsNoWindow)
{
    const FilePath2 missing = pathOf(folder / "missing.kvbdl.zip");
    EXPECT_THROW(openExampleBundleEditor(missing), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(shownWindow<ExampleBundleEditor>(), nullptr);
}

TEST_F(ExampleBundleEditorTest, TheMenuOfADirectoryOffersDirectoryAndFile)
{
    open();
    EXPECT_EQ(contextMenuOf(*content, row(QStringLiteral("content"))),
              (std::vector<std::string>{"Add Directory", "Add File"}));
}

TEST_F(ExampleBundleEditorTest, TheMenuOfAPartOffersFileAndPrimary)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}));
    EXPECT_EQ(contextMenuOf(*content, row(QStringLiteral("a.kvsch"))),
              (std::vector<std::string>{"Add File", "Set Primary"}));
}

TEST_F(ExampleBundleEditorTest, ARightClickBesideTheRowsShowsNoMenu)
{
    open();
    rightClick(*content->viewport(), content->viewport()->rect().bottomRight() - QPoint{3, 3});
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(ExampleBundleEditorTest, TheMenuKeyOpensTheMenuOfTheCurrentRow)
{
    open();
    content->setCurrentIndex(row(QStringLiteral("content")));
    std::size_t entries = 0;
    ModalDriver driver;
    driver.when<QMenu>([&](QMenu& menu) {
        entries = static_cast<std::size_t>(menu.actions().size());
        QTest::keyClick(&menu, Qt::Key_Escape);
    });
    QContextMenuEvent key{QContextMenuEvent::Keyboard,
                          content->inputMethodQuery(Qt::ImCursorRectangle).toRect().center()};
    QCoreApplication::sendEvent(content, &key);
    EXPECT_EQ(entries, 2U);
}

TEST_F(ExampleBundleEditorTest, AddFileOnAPartIsOfferedAndDoesNothing)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}));
    const auto before = dump(*content->model());
    chooseFromContextMenu(*content, row(QStringLiteral("a.kvsch")), QStringLiteral("Add File"),
                          [&](ModalDriver& driver) { answerFile(driver, folder.write("b.kvsch", "b")); });
    EXPECT_EQ(dump(*content->model()), before);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ExampleBundleEditorTest, AFileThatCannotBeReadShowsItsRowLeavesTheSquareRedAndSaysNothing)
{
    open();
    addLostFile("lost.kvsch");
    EXPECT_EQ(dump(*content->model()), "content\n  lost.kvsch\n");
    EXPECT_EQ(requirementColours(), "#ff0000\n#ff0000\n");
    EXPECT_FALSE(saveButton(*editor)->isEnabled());
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ExampleBundleEditorTest, ADirectoryThatExistsIsNotAddedAgainAndNothingIsShown)
{
    open();
    addDirectory(QStringLiteral("content"), QStringLiteral("sub"));
    addDirectory(QStringLiteral("content"), QStringLiteral("sub"));
    EXPECT_EQ(dump(*content->model()), "content\n  sub\n");
    addDirectory(QStringLiteral("sub"), QStringLiteral("deep"));
    addFile(QStringLiteral("deep"), folder.write("b.kvsch", "b"));
    addDirectory(QStringLiteral("sub"), QStringLiteral("deep"));
    addDirectory(QStringLiteral("content"), QStringLiteral("sub"));
    EXPECT_EQ(content->currentIndex().data().toString(), QStringLiteral("content")) << "which was clicked";
    EXPECT_TRUE(content->isExpanded(rowNamed(*content->model(), QStringLiteral("deep"))));
    EXPECT_EQ(dump(*content->model()), "content\n  sub\n    deep\n      b.kvsch\n");
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ExampleBundleEditorTest, TheDialogForAFileAsksForFilesOfTheSystem)
{
    open();
    chooseFromContextMenu(*content, row(QStringLiteral("content")), QStringLiteral("Add File"),
                          [this](ModalDriver& driver) { cancelDialogForFileToAdd(driver, *editor); });
}

TEST_F(ExampleBundleEditorTest, CancellingTheDialogForADirectoryChangesNothing)
{
    open();
    chooseFromContextMenu(*content, row(QStringLiteral("content")), QStringLiteral("Add Directory"), &cancelDialog);
    EXPECT_EQ(dump(*content->model()), "content\n");
}

TEST_F(ExampleBundleEditorTest, AnEmptyDirectoryNameIsTreatedAsCancel)
{
    open();
    addDirectory(QStringLiteral("content"), {});
    EXPECT_EQ(dump(*content->model()), "content\n");
}

TEST_F(ExampleBundleEditorTest, CancellingTheDialogForAFileChangesNothing)
{
    open();
    chooseFromContextMenu(*content, row(QStringLiteral("content")), QStringLiteral("Add File"), &cancelDialog);
    EXPECT_EQ(dump(*content->model()), "content\n");
    EXPECT_EQ(requirementColours(), "#ff0000\n#ff0000\n");
}

TEST_F(ExampleBundleEditorTest, CancellingTheSaveDialogWritesNothing)
{
    const auto path = writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}, "a.kvsch");
    const std::string before = readFile(path);
    open(path);
    typeProperty(titleRow, QStringLiteral("changed"));
    ModalDriver driver;
    cancelDialog(driver);
    QTest::mouseClick(saveButton(*editor), Qt::LeftButton);
    EXPECT_EQ(readFile(path), before);
}

TEST_F(ExampleBundleEditorTest, ANewDirectoryAloneDoesNotCountAsContent)
{
    open();
    addDirectory(QStringLiteral("content"), QStringLiteral("sub"));
    EXPECT_EQ(dump(*content->model()), "content\n  sub\n");
    EXPECT_EQ(requirementColours(), "#ff0000\n#ff0000\n");
}

TEST_F(ExampleBundleEditorTest, ADateThatIsNoneIsLoggedAndTheWindowGoesOn)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}, "a.kvsch"));
    typeProperty(createdRow, QStringLiteral("tomorrow"));
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines().front().rfind("error [ui] ", 0), 0U) << log.lines().front();
    EXPECT_NE(log.lines().front().find("tomorrow"), std::string::npos) << log.lines().front();
    EXPECT_EQ(property(createdRow), QStringLiteral("tomorrow"));
    typeProperty(createdRow, QStringLiteral("2026-03-01T12:00:00Z"));
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(ExampleBundleEditorTest, TabMovesFromTheEditedCellOn)
{
    open();
    properties->setCurrentIndex(properties->model()->index(0, 1));
    properties->setFocus();
    QTest::keyClick(properties, Qt::Key_F2);
    auto* const cell = properties->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    QTest::keyClicks(cell, QStringLiteral("analog"));
    QTest::keyClick(cell, Qt::Key_Tab);
    EXPECT_EQ(property(0), QStringLiteral("analog"));
    EXPECT_NE(properties->currentIndex(), properties->model()->index(0, 1));
}

TEST_F(ExampleBundleEditorTest, EveryViewHasAnAccessibleNameAndNamesAreReadableAtFirstSight)
{
    open();
    for (const QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{content, properties, requirements})
        EXPECT_FALSE(view->accessibleName().isEmpty()) << view->metaObject()->className();
    EXPECT_GE(properties->columnWidth(0),
              properties->fontMetrics().horizontalAdvance(QStringLiteral("Last Modified By")));
}

TEST_F(ExampleBundleEditorTest, SavesOverTheFileThatWasOpenedTwiceInARowAndUnderANewName)
{
    const auto path = writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}, "a.kvsch");
    open(path);
    typeProperty(titleRow, QStringLiteral("first"));
    saveAs(*editor, path);
    EXPECT_EQ(ExampleBundle::open(pathOf(path)).value().title().value(), String2{u8"first"});
    typeProperty(titleRow, QStringLiteral("second"));
    saveAs(*editor, path);
    EXPECT_EQ(ExampleBundle::open(pathOf(path)).value().title().value(), String2{u8"second"});
    const auto copy = folder / "copy without extension";
    saveAs(*editor, copy);
    EXPECT_EQ(readFile(copy), readFile(path));
}

TEST_F(ExampleBundleEditorTest, AFailedSaveIsToldInWordsAndTheNextSaveWorks)
{
    const auto path = writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}, "a.kvsch");
    open(path);
    typeProperty(titleRow, QStringLiteral("kept"));
    const auto [boxTitle, text] = failToSaveAs(*editor, folder / "missing directory/x.kvbdl.zip");
    EXPECT_EQ(boxTitle, QStringLiteral("Save bundle failed"));
    EXPECT_TRUE(text.contains(QStringLiteral("missing directory/x.kvbdl.zip"))) << qPrintable(text);
    EXPECT_TRUE(text.contains(QStringLiteral("No such file or directory"))) << qPrintable(text);
    saveAs(*editor, path);
    EXPECT_EQ(ExampleBundle::open(pathOf(path)).value().title().value(), String2{u8"kept"});
}

TEST_F(ExampleBundleEditorTest, AUserFillsABundleSavesItAndFindsEverythingAgain)
{
    const auto path = folder / "filter.kvbdl.zip";
    open();
    addDirectory(QStringLiteral("content"), QStringLiteral("data"));
    addFile(QStringLiteral("content"), folder.write("filter.kvsch", "schematic"));
    addFile(QStringLiteral("data"), folder.write("sweep.testplan", "plan"));
    setPrimary(QStringLiteral("filter.kvsch"));
    typeProperty(titleRow, QStringLiteral("Filter"));
    typeProperty(keywordsRow, QStringLiteral("alpha; beta gamma"));
    typeProperty(manufacturerRow, QStringLiteral("Renesas"));
    saveAs(*editor, path);
    closeEditor();

    open(path);
    EXPECT_EQ(dump(*content->model(), {}, {{0}, {Qt::DisplayRole, Qt::DecorationRole}}),
              "content | -\n  filter.kvsch | #ff0000\n  data | -\n    sweep.testplan | -\n");
    EXPECT_EQ(property(titleRow), QStringLiteral("Filter"));
    EXPECT_EQ(property(keywordsRow), QStringLiteral("alpha beta gamma"));
    EXPECT_EQ(property(manufacturerRow), QStringLiteral("Renesas"));
    EXPECT_TRUE(saveButton(*editor)->isEnabled());
    EXPECT_EQ(ExampleBundle::open(pathOf(path)).value().keywords().value().size(), 2U);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ExampleBundleEditorTest, UnusualNamesKeepTheirMarkThroughASave)
{
    for (const char* name :
         {"a b.kvsch", "100%.kvsch", "%41.kvsch", "a#b.kvsch", "\u00e4\u00f6.kvsch", "\u56de\u8def.kvsch"}) {
        const auto path = folder / "unusual.kvbdl.zip";
        open();
        addFile(QStringLiteral("content"), folder.write(name, name));
        setPrimary(QString::fromUtf8(name));
        saveAs(*editor, path);
        closeEditor();

        open(path);
        EXPECT_EQ(dump(*content->model(), {}, {{0}, {Qt::DisplayRole, Qt::DecorationRole}}),
                  std::string{"content | -\n  "} + name + " | #ff0000\n");
        EXPECT_EQ(requirementColours(), "#00ff00\n#00ff00\n") << name;
        closeEditor();
    }
}

TEST_F(ExampleBundleEditorTest, SaveDialogAsksForAContentBundle)
{
    open(writeExample(folder, "x.kvbdl.zip", {"a.kvsch"}, "a.kvsch"));
    ModalDriver driver;
    driver.when<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Save bundle as..."));
        EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Content Bundle (*.kvbdl.zip *.zip)")});
        dialog.reject();
    });
    QTest::mouseClick(saveButton(*editor), Qt::LeftButton);
    EXPECT_TRUE(driver.isDone());
}

TEST_F(ExampleBundleEditorTest, ClosingDeletesTheWindow)
{
    const QPointer<QWidget> window{&open()};
    closeEditor();
    EXPECT_TRUE(window.isNull());
}
