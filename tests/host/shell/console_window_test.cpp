#include "host/shell/console_window.h"

#include "kelvaris/system/application.h"
#include "tests/host/shell/test_functions.h"
#include "tests/support/temporary_folder.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

using HostShell::ConsoleWindow;

namespace {

class ConsoleWindowTest : public testing::Test
{
protected:
    ConsoleWindowTest()
    {
        m_window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_window));
    }

    ~ConsoleWindowTest() override { editor().document()->setModified(false); }

    ConsoleWindow& window() { return m_window; }
    QPlainTextEdit& editor() { return *m_window.findChild<QPlainTextEdit*>(QStringLiteral("scriptEdit")); }
    QListWidget& functions() { return *m_window.findChild<QListWidget*>(QStringLiteral("functionList")); }

    std::string output() const
    {
        return m_window.findChild<QPlainTextEdit*>(QStringLiteral("outputPane"))->toPlainText().toStdString();
    }

    void answerQuestion(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, &m_window, [button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            QTest::mouseClick(box->button(button), Qt::LeftButton);
        });
    }

private:
    TestFunctions m_functions;
    ConsoleWindow m_window;
};

} // namespace

TEST_F(ConsoleWindowTest, ListsTheRegisteredFunctionsInOrder)
{
    ASSERT_EQ(functions().count(), 3);
    EXPECT_EQ(functions().item(0)->text(), QStringLiteral("test_join"));
    EXPECT_EQ(functions().item(2)->text(), QStringLiteral("test_results"));
}

TEST_F(ConsoleWindowTest, RunsTheScriptOnF5AndShowsWhatItPrints)
{
    QTest::keyClicks(&editor(), QStringLiteral("print(test_join('a', ['b', 'c'])[1])"));
    QTest::keyClick(&editor(), Qt::Key_F5);
    EXPECT_EQ(output(), "b+c");
}

TEST_F(ConsoleWindowTest, ShowsAnErrorAndGoesToItsLine)
{
    editor().setPlainText(QStringLiteral("var a;\ntest_join();\nvar b;"));
    window().runScript();
    EXPECT_EQ(output(), "script:2: Error: test_join takes 1 to 3 arguments; none was given");
    EXPECT_EQ(editor().textCursor().selectedText(), QStringLiteral("test_join();"));
}

TEST_F(ConsoleWindowTest, ShowsTheLogAmongTheOutput)
{
    editor().setPlainText(QStringLiteral("try { test_fail() } catch (e) { print('caught') }"));
    window().runScript();
    EXPECT_EQ(output(), "error [script/function] test_fail failed: on purpose\ncaught");
}

TEST_F(ConsoleWindowTest, InsertsAFunctionFromTheListWithTheCursorBetweenItsParentheses)
{
    functions().setCurrentRow(0);
    functions().setFocus();
    QTest::keyClick(&functions(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("'a'"));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("test_join('a')"));
}

TEST_F(ConsoleWindowTest, OpensAndSavesAFileAsUtf8)
{
    const TemporaryFolder folder;
    const auto path = folder.write("größe.js", "print('ä')\n");
    ASSERT_TRUE(window().openFile(QString::fromStdString(path.string())));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("print('ä')\n"));
    EXPECT_FALSE(window().isWindowModified());
    QTest::keyClicks(&editor(), QStringLiteral("// "));
    EXPECT_TRUE(window().isWindowModified());
    QTest::keySequence(&editor(), QKeySequence::Save);
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(readFile(path), "// print('ä')\n");
}

TEST_F(ConsoleWindowTest, TellsWhyAFileCannotBeReadAndKeepsTheScript)
{
    editor().setPlainText(QStringLiteral("print(1)"));
    answerQuestion(QMessageBox::Ok);
    EXPECT_FALSE(window().openFile(QStringLiteral("/not/there.js")));
    EXPECT_EQ(editor().toPlainText(), QStringLiteral("print(1)"));
}

TEST_F(ConsoleWindowTest, AsksBeforeAnUnsavedScriptIsDropped)
{
    QTest::keyClicks(&editor(), QStringLiteral("print(1)"));
    answerQuestion(QMessageBox::Cancel);
    EXPECT_FALSE(window().close());
    answerQuestion(QMessageBox::Discard);
    EXPECT_TRUE(window().close());
}

TEST_F(ConsoleWindowTest, ClosesWithoutAQuestionWhenNothingWasChanged)
{
    EXPECT_TRUE(window().close());
}
