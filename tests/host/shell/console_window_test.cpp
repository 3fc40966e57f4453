#include "host/shell/console_window.h"

#include "tests/host/shell/test_functions.h"
#include "tests/support/modal_driver.h"
#include "tests/support/temporary_folder.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using HostShell::ConsolePlaces;
using HostShell::ConsoleWindow;
using testing::HasSubstr;

namespace {

QString text(const std::filesystem::path& path)
{
    return QString::fromStdString(path.string());
}

class ConsoleWindowTest : public testing::Test
{
protected:
    ConsoleWindowTest() { open(); }

    ~ConsoleWindowTest() override { editor().document()->setModified(false); }

    /// Another window in the place of the one before, as after a new start of the program.
    void open()
    {
        m_window.reset();
        m_window = std::make_unique<ConsoleWindow>(
            ConsolePlaces{text(folder / "config/console.ini"), text(folder / "data/history.jsonl")});
        m_window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    }

    template <class Widget>
    Widget& child(const char* name)
    {
        return *m_window->findChild<Widget*>(QString::fromLatin1(name));
    }

    ConsoleWindow& window() { return *m_window; }
    QPlainTextEdit& editor() { return child<QPlainTextEdit>("scriptEdit"); }
    QLineEdit& line() { return child<QLineEdit>("lineInput"); }
    QListWidget& functions() { return child<QListWidget>("functionList"); }
    std::string output() { return child<QPlainTextEdit>("outputPane").toPlainText().toStdString(); }
    std::string log() { return child<QPlainTextEdit>("logPane").toPlainText().toStdString(); }

    /// Starts something that runs, and waits for its end.
    template <class Start>
    void untilEnded(Start start)
    {
        QSignalSpy ended{m_window.get(), &ConsoleWindow::ended};
        start();
        EXPECT_TRUE(ended.count() == 1 || ended.wait(20'000));
    }

    void run(const char* script)
    {
        editor().setPlainText(QString::fromUtf8(script));
        untilEnded([this] { QTest::keyClick(&editor(), Qt::Key_F5); });
    }

    void enter(const char* script)
    {
        line().setFocus();
        QTest::keyClicks(&line(), QString::fromUtf8(script));
        untilEnded([this] { QTest::keyClick(&line(), Qt::Key_Return); });
    }

    void clickTool(const QString& action)
    {
        for (QToolButton* button : window().findChild<QToolBar*>()->findChildren<QToolButton*>()) {
            if (button->text() == action)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        ADD_FAILURE() << "no button " << qPrintable(action);
    }

    /// Drops a file on a widget as a file manager does.
    void drop(QWidget& target, const std::filesystem::path& path)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(text(path))});
        QDragEnterEvent enterEvent{QPoint{5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(&target, &enterEvent);
        EXPECT_TRUE(enterEvent.isAccepted());
        QDropEvent dropEvent{QPointF{5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(&target, &dropEvent);
        QCoreApplication::processEvents();
    }

    TemporaryFolder folder;

private:
    TestFunctions m_functions;
    std::unique_ptr<ConsoleWindow> m_window;
};

void answer(ModalDriver& driver, QMessageBox::StandardButton button)
{
    driver.when<QMessageBox>([button](QMessageBox& box) { QTest::mouseClick(box.button(button), Qt::LeftButton); });
}

} // namespace

TEST_F(ConsoleWindowTest, ListsTheRegisteredFunctionsInOrderAndThenTheHostsOwn)
{
    ASSERT_EQ(functions().count(), 5);
    EXPECT_EQ(functions().item(0)->text(), QStringLiteral("test_join"));
    EXPECT_EQ(functions().item(2)->text(), QStringLiteral("test_results"));
    EXPECT_EQ(functions().item(3)->text(), QStringLiteral("print"));
}

TEST_F(ConsoleWindowTest, ShowsTheDocumentationOfTheCurrentFunction)
{
    QTest::keyClick(&functions(), Qt::Key_End);
    EXPECT_THAT(child<QTextBrowser>("documentationPane").toPlainText().toStdString(), HasSubstr("exit([status])"));
}

TEST_F(ConsoleWindowTest, ShowsTheDocumentationOfTheFunctionAtTheCursor)
{
    QTest::keyClicks(&editor(), QStringLiteral("print"));
    QTest::keySequence(&editor(), QKeySequence::HelpContents);
    EXPECT_EQ(functions().currentItem()->text(), QStringLiteral("print"));
    EXPECT_TRUE(child<QTextBrowser>("documentationPane").hasFocus());
}

TEST_F(ConsoleWindowTest, RunsTheScriptOnF5AndShowsWhatItPrints)
{
    QTest::keyClicks(&editor(), QStringLiteral("print(test_join('a', ['b', 'c'])[1])"));
    untilEnded([this] { QTest::keyClick(&editor(), Qt::Key_F5); });
    EXPECT_EQ(output(), "b+c");
    EXPECT_EQ(window().statusBar()->currentMessage(), QStringLiteral("Done."));
}

TEST_F(ConsoleWindowTest, RunsTheScriptByAClickOnTheTool)
{
    editor().setPlainText(QStringLiteral("print('clicked')"));
    untilEnded([this] { clickTool(QStringLiteral("Run script")); });
    EXPECT_EQ(output(), "clicked");
}

TEST_F(ConsoleWindowTest, StopsAnEndlessLoopAndStaysUsableMeanwhile)
{
    editor().setPlainText(QStringLiteral("while (true) {}"));
    untilEnded([this] {
        QTest::keyClick(&editor(), Qt::Key_F5);
        EXPECT_TRUE(window().isRunning());
        QTest::keyClick(&editor(), Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(&editor(), QStringLiteral("// still alive"));
        EXPECT_TRUE(window().isRunning());
        clickTool(QStringLiteral("Stop"));
    });
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("while (true) {}// still alive"));
    EXPECT_EQ(window().statusBar()->currentMessage(), QStringLiteral("Stopped."));
    run("print('again')");
    EXPECT_EQ(output(), "again");
}

TEST_F(ConsoleWindowTest, StopsAScriptThatPrintsWithoutEndAndCatchesEverything)
{
    editor().setPlainText(QStringLiteral("for (;;) { try { print('x'); console.log('y') } catch (e) {} }"));
    untilEnded([this] {
        QTest::keyClick(&editor(), Qt::Key_F5);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !output().empty() && !log().empty(); }, 20'000));
        QTest::keyClick(&editor(), Qt::Key_F5, Qt::ShiftModifier);
    });
    EXPECT_LE(child<QPlainTextEdit>("outputPane").blockCount(), 10'000);
}

TEST_F(ConsoleWindowTest, CallsFunctionsOnTheThreadOfTheWindow)
{
    run("for (var i = 0; i < 200; ++i) test_join('a'); print(test_results()[1])");
    EXPECT_EQ(output(), "two\nlines");
}

TEST_F(ConsoleWindowTest, MarksAnErrorAtItsLine)
{
    run("var a;\n\n  test_join();\nvar b;");
    EXPECT_EQ(output(), "script:3: Error: test_join takes 1 to 3 arguments; none was given");
    EXPECT_EQ(editor().textCursor().blockNumber(), 2);
    ASSERT_EQ(editor().extraSelections().size(), 1);
    EXPECT_EQ(editor().extraSelections().front().cursor.blockNumber(), 2);
    QTest::keyClick(&editor(), Qt::Key_Delete);
    EXPECT_TRUE(editor().extraSelections().isEmpty());
}

TEST_F(ConsoleWindowTest, MarksASyntaxErrorAtItsLine)
{
    run("var a = 1;\nvar b = ;\n");
    EXPECT_EQ(editor().textCursor().blockNumber(), 1);
    EXPECT_EQ(editor().extraSelections().size(), 1);
}

TEST_F(ConsoleWindowTest, ShowsTheLogInAPaneOfItsOwn)
{
    run("try { test_fail() } catch (e) { print('caught') }; console.log('seen')");
    EXPECT_EQ(output(), "caught");
    EXPECT_EQ(log(), "error [script/function] test_fail failed: on purpose\ndiagnostic [qt/js] seen");
}

TEST_F(ConsoleWindowTest, ClearsOutputAndLog)
{
    run("print('a'); console.log('b')");
    QTest::keyClick(&editor(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(output() + log(), "");
}

TEST_F(ConsoleWindowTest, CutsALineThatNobodyCouldRead)
{
    run("print('x'.repeat(3000000))");
    EXPECT_THAT(output(), HasSubstr("(2980000 more characters)"));
}

TEST_F(ConsoleWindowTest, TellsTheStatusThatAScriptEndedWith)
{
    run("exit(3); print('never')");
    EXPECT_EQ(output(), "");
    EXPECT_EQ(window().statusBar()->currentMessage(), QStringLiteral("Ended by exit(3)."));
}

TEST_F(ConsoleWindowTest, InsertsAFunctionFromTheListWithItsArguments)
{
    functions().setCurrentRow(0);
    functions().setFocus();
    QTest::keyClick(&functions(), Qt::Key_Return);
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("test_join(argument1)"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("'a'"));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("test_join('a')"));
    EXPECT_EQ(window().statusBar()->currentMessage(), QStringLiteral("test_join(argument1[, argument2[, argument3]])"));
}

TEST_F(ConsoleWindowTest, RunsALineAndPrintsItsValue)
{
    enter("test_join('a', ['b', 'c'])");
    EXPECT_EQ(output(), "> test_join('a', ['b', 'c'])\na,b+c");
    EXPECT_EQ(line().text(), QString{});
    EXPECT_TRUE(line().hasFocus());
    enter("missing()");
    EXPECT_THAT(output(), HasSubstr("ReferenceError: missing is not defined"));
}

TEST_F(ConsoleWindowTest, BringsBackEarlierLinesAlsoAfterANewStart)
{
    enter("1 + 1");
    enter("2 + 2");
    open();
    QTest::keyClicks(&line(), QStringLiteral("draft"));
    QTest::keyClick(&line(), Qt::Key_Up);
    EXPECT_EQ(line().text(), QStringLiteral("2 + 2"));
    QTest::keyClick(&line(), Qt::Key_Up);
    QTest::keyClick(&line(), Qt::Key_Up);
    EXPECT_EQ(line().text(), QStringLiteral("1 + 1"));
    QTest::keyClick(&line(), Qt::Key_Down);
    QTest::keyClick(&line(), Qt::Key_Down);
    EXPECT_EQ(line().text(), QStringLiteral("draft"));
}

TEST_F(ConsoleWindowTest, HasAScriptInTheHistoryFileBeforeItRuns)
{
    editor().setPlainText(QStringLiteral("while (true) {}"));
    untilEnded([this] {
        QTest::keyClick(&editor(), Qt::Key_F5);
        EXPECT_EQ(readFile(folder / "data/history.jsonl"), "[\"while (true) {}\"]\n");
        QTest::keyClick(&editor(), Qt::Key_F5, Qt::ShiftModifier);
    });
}

TEST_F(ConsoleWindowTest, RunsAScriptAlthoughTheHistoryCannotBeWritten)
{
    folder.write("data/history.jsonl/in the way", "");
    open();
    run("print('run')");
    EXPECT_EQ(output(), "run");
    EXPECT_THAT(log(), HasSubstr("Cannot write the history"));
}

TEST_F(ConsoleWindowTest, PutsAScriptOfTheHistoryBackIntoTheEditor)
{
    run("print('one');\nprint('two');");
    editor().clear();
    editor().document()->setModified(false);
    ModalDriver driver;
    driver.when<QMenu>([](QMenu& menu) {
        QTest::keyClick(&menu, Qt::Key_H);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    });
    QTest::keyClick(&window(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&driver] { return driver.isDone(); }));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("print('one');\nprint('two');"));
    EXPECT_TRUE(window().isWindowModified());
}

TEST_F(ConsoleWindowTest, OpensAndSavesAFileAsUtf8)
{
    const auto path = folder.write("größe.js", "print('ä')\n");
    ASSERT_TRUE(window().openFile(text(path)));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("print('ä')\n"));
    EXPECT_FALSE(window().isWindowModified());
    QTest::keyClicks(&editor(), QStringLiteral("// "));
    EXPECT_TRUE(window().isWindowModified());
    QTest::keySequence(&editor(), QKeySequence::Save);
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(readFile(path), "// print('ä')\n");
}

TEST_F(ConsoleWindowTest, OpensAFileThatIsDroppedOnTheEditor)
{
    drop(*editor().viewport(), folder.write("dropped.js", "print(1)"));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("print(1)"));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("dropped.js[*] - Hollerwick"));
}

TEST_F(ConsoleWindowTest, AsksWhatBecomesOfAnUnsavedScriptWhenAFileIsDropped)
{
    QTest::keyClicks(&editor(), QStringLiteral("mine"));
    ModalDriver driver;
    answer(driver, QMessageBox::Cancel);
    drop(window(), folder.write("dropped.js", "print(1)"));
    EXPECT_TRUE(driver.isDone());
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("mine"));
}

TEST_F(ConsoleWindowTest, TellsWhyAFileCannotBeOpenedAndKeepsTheScript)
{
    editor().setPlainText(QStringLiteral("print(1)"));
    editor().document()->setModified(false);
    QString told;
    ModalDriver driver;
    driver
        .when<QMessageBox>([&](QMessageBox& box) {
            told = box.text();
            QTest::keyClick(&box, Qt::Key_Return);
        })
        .when<QMessageBox>([&](QMessageBox& box) {
            told += QLatin1Char{'\n'} + box.text();
            QTest::keyClick(&box, Qt::Key_Return);
        });
    EXPECT_FALSE(window().openFile(QStringLiteral("/not/there.js")));
    EXPECT_FALSE(window().openFile(text(folder.write("letter.txt", "Dear all"))));
    EXPECT_THAT(told.toStdString(), HasSubstr("Cannot read /not/there.js: No such file or directory"));
    EXPECT_THAT(told.toStdString(), HasSubstr("letter.txt"));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("print(1)"));
}

TEST_F(ConsoleWindowTest, OffersRecentFilesAlsoAfterANewStart)
{
    const auto path = folder.write("a & b.js", "print('recent')");
    ASSERT_TRUE(window().openFile(text(path)));
    open();
    ModalDriver driver;
    driver.when<QMenu>([](QMenu& menu) {
        QTest::keyClick(&menu, Qt::Key_R);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    });
    QTest::keyClick(&window(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&driver] { return driver.isDone(); }));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("print('recent')"));
}

TEST_F(ConsoleWindowTest, AsksBeforeAnUnsavedScriptIsDropped)
{
    QTest::keyClicks(&editor(), QStringLiteral("print(1)"));
    ModalDriver driver;
    answer(driver, QMessageBox::Cancel);
    answer(driver, QMessageBox::Discard);
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().close());
}

TEST_F(ConsoleWindowTest, SavesAnUnsavedScriptOnTheWayOut)
{
    QTest::keyClicks(&editor(), QStringLiteral("print(1)"));
    const auto path = folder / "saved.js";
    ModalDriver driver;
    answer(driver, QMessageBox::Save);
    driver.when<QFileDialog>([&](QFileDialog& dialog) { chooseFile(dialog, text(path)); });
    EXPECT_TRUE(window().close());
    EXPECT_EQ(readFile(path), "print(1)");
}

TEST_F(ConsoleWindowTest, StaysOpenWhenTheScriptCannotBeSaved)
{
    QTest::keyClicks(&editor(), QStringLiteral("print(1)"));
    ModalDriver driver;
    answer(driver, QMessageBox::Save);
    driver.when<QFileDialog>([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isWindowModified());
}

TEST_F(ConsoleWindowTest, ClosesWithoutAQuestionWhenNothingWasChanged)
{
    EXPECT_TRUE(window().close());
}

TEST_F(ConsoleWindowTest, StopsTheScriptAndThenClosesWhenItIsClosedMeanwhile)
{
    editor().setPlainText(QStringLiteral("while (true) {}"));
    editor().document()->setModified(false);
    untilEnded([this] {
        QTest::keyClick(&editor(), Qt::Key_F5);
        EXPECT_FALSE(window().close());
    });
    EXPECT_FALSE(window().isVisible());
}

TEST_F(ConsoleWindowTest, GoesAwayWithAScriptThatStillRuns)
{
    editor().setPlainText(QStringLiteral("for (;;) print(test_join('a')[0])"));
    editor().document()->setModified(false);
    QTest::keyClick(&editor(), Qt::Key_F5);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !output().empty(); }, 20'000));
    open();
    EXPECT_FALSE(window().isRunning());
}

TEST_F(ConsoleWindowTest, StandsWhereItStoodBefore)
{
    window().resize(901, 555);
    ASSERT_TRUE(window().close());
    open();
    EXPECT_EQ(window().size(), QSize(901, 555));
}

TEST_F(ConsoleWindowTest, GoesThroughItsPanesByF6)
{
    const auto names = [this](Qt::KeyboardModifiers modifiers) {
        std::vector<std::string> all;
        for (int i = 0; i < 6; ++i) {
            QTest::keyClick(&window(), Qt::Key_F6, modifiers);
            all.push_back(window().focusWidget()->objectName().toStdString());
        }
        return all;
    };
    EXPECT_THAT(names({}), testing::ElementsAre("outputPane", "logPane", "lineInput", "functionList",
                                                "documentationPane", "scriptEdit"));
    EXPECT_THAT(names(Qt::ShiftModifier), testing::ElementsAre("documentationPane", "functionList", "lineInput",
                                                               "logPane", "outputPane", "scriptEdit"));
}
