#include "host/shell/script_editor.h"

#include "tests/host/shell/test_functions.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

using HostShell::ScriptEditor;

namespace {

/// An editor with a field behind it.
class ScriptEditorTest : public testing::Test
{
protected:
    ScriptEditorTest()
    {
        auto* layout = new QVBoxLayout{&m_window};
        layout->addWidget(m_editor = new ScriptEditor);
        layout->addWidget(m_behind = new QLineEdit);
        m_window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_window));
        m_editor->setFocus();
    }

    void type(const char* text) { QTest::keyClicks(m_editor, QString::fromUtf8(text)); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(m_editor, key, modifiers); }
    std::string text() const { return m_editor->toPlainText().toStdString(); }
    std::string selected() const { return m_editor->textCursor().selectedText().toStdString(); }
    ScriptEditor& editor() { return *m_editor; }
    QLineEdit& behind() { return *m_behind; }

private:
    TestFunctions m_functions;
    QWidget m_window;
    ScriptEditor* m_editor;
    QLineEdit* m_behind;
};

} // namespace

TEST_F(ScriptEditorTest, CompletesANameOnTabWithItsArguments)
{
    type("var a = test_j");
    press(Qt::Key_Tab);
    EXPECT_EQ(text(), "var a = test_join(argument1)");
    EXPECT_EQ(selected(), "argument1");
}

TEST_F(ScriptEditorTest, GoesOnTabFromArgumentToArgumentAndThenBehindTheCall)
{
    type("pri");
    press(Qt::Key_Tab);
    EXPECT_EQ(selected(), "text");
    type("test_j");
    press(Qt::Key_Tab);
    type("'a'");
    press(Qt::Key_Tab);
    type("[0]");
    press(Qt::Key_Tab);
    type(";");
    EXPECT_EQ(text(), "print(test_join('a')[0]);");
}

TEST_F(ScriptEditorTest, LeavesTheCursorInsideACallWithOptionalArgumentsAlone)
{
    type("exi");
    press(Qt::Key_Tab);
    type("2");
    press(Qt::Key_Tab);
    type(";");
    EXPECT_EQ(text(), "exit(2);");
}

TEST_F(ScriptEditorTest, OffersAListWhereSeveralNamesBeginSo)
{
    type("te");
    press(Qt::Key_Tab);
    EXPECT_EQ(text(), "test_");
    QWidget* list = QApplication::activePopupWidget();
    ASSERT_NE(list, nullptr);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(text(), "test_results()");
}

TEST_F(ScriptEditorTest, NarrowsTheListWhileTypingGoesOn)
{
    type("te");
    press(Qt::Key_Tab);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_F);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Tab);
    EXPECT_EQ(text(), "test_fail()");
}

TEST_F(ScriptEditorTest, GivesACallThatHasItsParenthesesTheNameAlone)
{
    editor().setPlainText(QStringLiteral("test_j('a')"));
    editor().moveCursor(QTextCursor::Start);
    for (int i = 0; i < 6; ++i)
        press(Qt::Key_Right);
    press(Qt::Key_Tab);
    EXPECT_EQ(text(), "test_join('a')");
    press(Qt::Key_Tab);
    EXPECT_EQ(text(), "test_join('a')");
    EXPECT_TRUE(behind().hasFocus());
}

TEST_F(ScriptEditorTest, LetsTabOutWhereThereIsNothingToComplete)
{
    type("var x = 1; ");
    press(Qt::Key_Tab);
    EXPECT_TRUE(behind().hasFocus());
    QTest::keyClick(&behind(), Qt::Key_Backtab);
    EXPECT_TRUE(editor().hasFocus());
    EXPECT_EQ(text(), "var x = 1; ");
}

TEST_F(ScriptEditorTest, ForgetsTheArgumentsOfACallThatWasLeft)
{
    type("test_j");
    press(Qt::Key_Tab);
    press(Qt::Key_End);
    press(Qt::Key_Return);
    press(Qt::Key_Tab);
    EXPECT_TRUE(behind().hasFocus());
}

TEST_F(ScriptEditorTest, BeginsALineWhereTheOneAboveBegins)
{
    type("    if (a) {");
    press(Qt::Key_Return);
    type("b");
    EXPECT_EQ(text(), "    if (a) {\n    b");
}

TEST_F(ScriptEditorTest, MovesLinesInAndOut)
{
    editor().setPlainText(QStringLiteral("a\n  b\nc"));
    editor().selectAll();
    press(Qt::Key_Tab);
    EXPECT_EQ(text(), "    a\n      b\n    c");
    editor().unindent();
    editor().unindent();
    EXPECT_EQ(text(), "a\nb\nc");
}

TEST_F(ScriptEditorTest, MakesRoomForTheNumberOfItsLastLine)
{
    const int before = editor().viewport()->x();
    EXPECT_GT(before, 0);
    editor().setPlainText(QString{100'000, QLatin1Char{'\n'}});
    EXPECT_GT(editor().viewport()->x(), before);
}

TEST_F(ScriptEditorTest, MarksALineUntilTheScriptIsChanged)
{
    editor().setPlainText(QStringLiteral("a\nb\nc"));
    editor().markError(2, QStringLiteral("why"));
    EXPECT_EQ(editor().errorLine(), 2);
    editor().markError(9, QStringLiteral("beyond the last line"));
    EXPECT_EQ(editor().errorLine(), 2);
    type("x");
    EXPECT_EQ(editor().errorLine(), 0);
}
