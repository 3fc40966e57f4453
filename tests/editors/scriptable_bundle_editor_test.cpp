#include "editors/scriptable_bundle_editor.h"

#include "kelvaris/system/qt/path_bridge.h"
#include "tests/editors/window_fixture.h"
#include "tests/support/environment_variable.h"
#include "tests/support/model_dump.h"

#include <QtTest/QTest>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTextEdit>

#include <gmock/gmock.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;

namespace {

std::wstring wide(const std::filesystem::path& path)
{
    return textOf(path).toStdWString();
}

/// More bytes than a bundle keeps in memory, so that it needs room for temporary files.
QString largeScript()
{
    QString text;
    while (text.size() < 1'500'000)
        text += QString{1000, QChar{0x20AC}} + QLatin1Char{'\n'}; // three bytes in UTF-8
    return text;
}

class ScriptableBundleEditorTest : public WindowFixture
{
protected:
    ScriptableBundleEditor& open(const std::optional<std::filesystem::path>& path = std::nullopt)
    {
        openScriptableBundleEditor(path ? std::optional{wide(*path)} : std::nullopt);
        editor = shownWindow<ScriptableBundleEditor>();
        tree = editor->findChild<QTreeView*>();
        script = editor->findChild<QTextEdit*>();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(editor));
        return *editor;
    }

    std::filesystem::path writeScriptable(const char8_t* text)
    {
        auto bundle = ScriptableBundle::create().value();
        (void)bundle.setScript(text).value();
        const auto path = folder / "x.kvsbd.zip";
        bundle.writeToFile(pathOf(path)).value();
        return path;
    }

    /// The script in a file: what a second `setScript` would replace.
    std::string scriptIn(const std::filesystem::path& path)
    {
        auto bundle = ScriptableBundle::open(pathOf(path)).value();
        const auto relationships =
            bundle.package()
                .relationshipsByType(u8"http://schemas.kelvaris.example/package/2025/relationships/"
                                     u8"scriptable-bundle/script")
                .value();
        auto relationship = relationships.begin();
        if (relationship == OpcPackaging::OpcPackageRelationshipCollectionIterator::Sentinel{})
            return "no script";
        const auto target = (*relationship).targetUri().value().toLocalFile(UrlLocalFileOptions::relativePath).value();
        return readFromZip(path, target);
    }

    static std::string readFromZip(const std::filesystem::path& archive, const FilePath2& entry)
    {
        const std::string command = "unzip -p '" + archive.string() + "' '" + toQString(entry).toStdString() + "'";
        std::string bytes;
        FILE* const pipe = popen(command.c_str(), "r");
        char buffer[4096];
        for (std::size_t read = 0; (read = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
            bytes.append(buffer, read);
        EXPECT_EQ(pclose(pipe), 0);
        return bytes;
    }

    ScriptableBundleEditor* editor = nullptr;
    QTreeView* tree = nullptr;
    QTextEdit* script = nullptr;
};

} // namespace

TEST_F(ScriptableBundleEditorTest, WithoutAnArgumentShowsAnEmptyPackageAndAnEmptyText)
{
    open();
    EXPECT_EQ(dump(*tree->model()).rfind("Parts\n", 0), 0U);
    EXPECT_TRUE(script->toPlainText().isEmpty());
    EXPECT_TRUE(tree->isHeaderHidden());
    EXPECT_TRUE(saveButton(*editor)->isEnabled());
}

TEST_F(ScriptableBundleEditorTest, SavesTheTextAsTheScript)
{
    open();
    QTest::keyClicks(script, QStringLiteral("run(1);"));
    const auto path = folder / "new.kvsbd.zip";
    saveAs(*editor, path);
    EXPECT_EQ(scriptIn(path), "run(1);");
    EXPECT_TRUE(editor->isVisible());
}

TEST_F(ScriptableBundleEditorTest, SavingWithAnEmptyTextSetsAnEmptyScript)
{
    open();
    const auto path = folder / "new.kvsbd.zip";
    saveAs(*editor, path);
    EXPECT_EQ(scriptIn(path), "");
}

TEST_F(ScriptableBundleEditorTest, OpeningLeavesTheTextEmptyAndSavingAtOnceReplacesTheScriptWithAnEmptyOne)
{
    const auto path = writeScriptable(u8"precious();");
    EXPECT_EQ(scriptIn(path), "precious();");
    open(path);
    EXPECT_TRUE(script->toPlainText().isEmpty());
    saveAs(*editor, path);
    EXPECT_EQ(scriptIn(path), "");
}

TEST_F(ScriptableBundleEditorTest, MenusFollowTheItemType)
{
    open();
    const auto& model = *tree->model();
    EXPECT_EQ(contextMenuOf(*tree, rowNamed(model, QStringLiteral("Parts"))),
              (std::vector<std::string>{"Add Directory", "Add File"}));
    EXPECT_EQ(contextMenuOf(*tree, rowNamed(model, QStringLiteral("Relationships"))), std::vector<std::string>{});
    rightClick(*tree->viewport(), tree->viewport()->rect().bottomRight() - QPoint{3, 3});
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(ScriptableBundleEditorTest, AddsADirectoryAndAFileInItAndSavesThem)
{
    open();
    const auto& model = *tree->model();
    chooseFromContextMenu(*tree, rowNamed(model, QStringLiteral("Parts")), QStringLiteral("Add Directory"),
                          [](ModalDriver& driver) { answerDirectoryName(driver, QStringLiteral("plans")); });
    tree->expandAll();
    chooseFromContextMenu(*tree, rowNamed(model, QStringLiteral("plans")), QStringLiteral("Add File"),
                          [&](ModalDriver& driver) { answerFile(driver, folder.write("a.testplan", "plan")); });
    tree->expandAll();
    EXPECT_EQ(contextMenuOf(*tree, rowNamed(model, QStringLiteral("a.testplan"))),
              (std::vector<std::string>{"Add File"}));
    const auto path = folder / "new.kvsbd.zip";
    saveAs(*editor, path);
    EXPECT_EQ(readFromZip(path, pathOf("plans/a.testplan")), "plan");
    auto bundle = ScriptableBundle::open(pathOf(path)).value();
    const auto content = bundle.package()
                             .relationshipsByType(u8"http://schemas.kelvaris.example/package/2025/relationships/"
                                                  u8"content-bundle/content")
                             .value();
    auto relationship = content.begin();
    ASSERT_NE(relationship, OpcPackaging::OpcPackageRelationshipCollectionIterator::Sentinel{});
    EXPECT_EQ((*relationship).targetUri().value().text(), String2{u8"/plans/a.testplan"});
}

TEST_F(ScriptableBundleEditorTest, AddFileOnAPartIsOfferedAndRefusedInSilence)
{
    open(writeScriptable(u8"x"));
    tree->expandAll();
    const auto before = dump(*tree->model());
    QModelIndex part = tree->model()->index(0, 0);
    while (part.data(Qt::UserRole).toInt() != 0)
        part = tree->model()->index(0, 0, part);
    chooseFromContextMenu(*tree, part, QStringLiteral("Add File"),
                          [&](ModalDriver& driver) { answerFile(driver, folder.write("a.testplan", "plan")); });
    EXPECT_EQ(dump(*tree->model()), before);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ScriptableBundleEditorTest, ADirectoryThatExistsIsNotAddedAgainAndNothingIsShown)
{
    open();
    const auto parts = rowNamed(*tree->model(), QStringLiteral("Parts"));
    std::string once;
    for (const char* name : {"plans", "plans", "PLANS"}) {
        chooseFromContextMenu(*tree, parts, QStringLiteral("Add Directory"),
                              [name](ModalDriver& driver) { answerDirectoryName(driver, QString::fromUtf8(name)); });
        if (once.empty())
            once = dump(*tree->model());
        EXPECT_EQ(dump(*tree->model()), once) << name;
    }
    EXPECT_NE(once.find("plans\n"), std::string::npos) << once;
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ScriptableBundleEditorTest, TheDialogForAFileAsksForFilesOfTheSystem)
{
    open();
    chooseFromContextMenu(*tree, rowNamed(*tree->model(), QStringLiteral("Parts")), QStringLiteral("Add File"),
                          [this](ModalDriver& driver) { cancelDialogForFileToAdd(driver, *editor); });
}

TEST_F(ScriptableBundleEditorTest, CancellingAnyDialogChangesNothing)
{
    open();
    const auto before = dump(*tree->model());
    const auto parts = rowNamed(*tree->model(), QStringLiteral("Parts"));
    chooseFromContextMenu(*tree, parts, QStringLiteral("Add Directory"), &cancelDialog);
    chooseFromContextMenu(*tree, parts, QStringLiteral("Add File"), &cancelDialog);
    ModalDriver driver;
    cancelDialog(driver);
    QTest::mouseClick(saveButton(*editor), Qt::LeftButton);
    EXPECT_EQ(dump(*tree->model()), before);
}

TEST_F(ScriptableBundleEditorTest, AFileThatCannotBeWrittenIsToldAndTheUserCanTryAgain)
{
    open();
    QTest::keyClicks(script, QStringLiteral("run(2);"));
    const auto [title, text] = failToSaveAs(*editor, folder / "missing/x.kvsbd.zip");
    EXPECT_EQ(title, QStringLiteral("Save bundle failed"));
    EXPECT_TRUE(text.contains(QStringLiteral("missing/x.kvsbd.zip"))) << qPrintable(text);
    const auto path = folder / "x.kvsbd.zip";
    saveAs(*editor, path);
    EXPECT_EQ(scriptIn(path), "run(2);");
}

TEST_F(ScriptableBundleEditorTest, AScriptThatCannotBeSetIsToldAndTheRestIsSavedAllTheSame)
{
    open(writeScriptable(u8"old();"));
    script->setPlainText(largeScript());
    const auto path = folder / "new.kvsbd.zip";
    {
        const EnvironmentVariable noRoom{"TMPDIR", (folder / "no room").string()};
        const auto [title, text] = failToSaveAs(*editor, path);
        EXPECT_EQ(title, QStringLiteral("Save bundle failed"));
        EXPECT_TRUE(text.contains(QStringLiteral("no room"))) << qPrintable(text);
    }
    EXPECT_EQ(scriptIn(path), "old();");
    saveAs(*editor, path);
    EXPECT_EQ(scriptIn(path), largeScript().toStdString());
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ScriptableBundleEditorTest, AWarningShowsANameOfBytesThatAreNoText)
{
    open();
    script->setPlainText(largeScript());
    const EnvironmentVariable noRoom{"TMPDIR", (folder / "no room \xFF").string()};
    const QString text = failToSaveAs(*editor, folder / "x.kvsbd.zip").second;
    EXPECT_TRUE(text.contains(QStringLiteral("no room \\xFF"))) << qPrintable(text);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ScriptableBundleEditorTest, AScriptThatCannotBeSetAndAFileThatCannotBeWrittenAreTwoWarningsInARow)
{
    open();
    script->setPlainText(largeScript());
    const EnvironmentVariable noRoom{"TMPDIR", (folder / "no room").string()};
    std::vector<std::string> told;
    ModalDriver driver;
    answerFile(driver, folder / "missing/x.kvsbd.zip");
    for (int box = 0; box < 2; ++box) {
        driver.when<QMessageBox>([&](QMessageBox& warning) {
            told.push_back(warning.text().toStdString());
            clickButton(warning, QStringLiteral("OK"));
        });
    }
    QTest::mouseClick(saveButton(*editor), Qt::LeftButton);
    EXPECT_THAT(told, testing::ElementsAre(testing::HasSubstr("no room"), testing::HasSubstr("missing/x.kvsbd.zip")));
    EXPECT_TRUE(editor->isVisible());
}

TEST_F(ScriptableBundleEditorTest, AFileThatCannotBeOpenedFailsTheCallAndShowsNoWindow)
{
    EXPECT_THROW(openScriptableBundleEditor(wide(folder / "missing.kvsbd.zip")), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(shownWindow<ScriptableBundleEditor>(), nullptr);
}

TEST_F(ScriptableBundleEditorTest, ReplacingTheBundleAndClosingLetGoOfTheBorrowedPackageFirst)
{
    const auto path = writeScriptable(u8"x");
    open();
    tree->expandAll();
    tree->setCurrentIndex(tree->model()->index(0, 0));
    editor->openBundle(wide(path));
    tree->expandAll();
    editor->openBundle(wide(path));
    const QPointer<QWidget> window{editor};
    editor->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}
