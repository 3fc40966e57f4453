#pragma once

#include <QtGui/QTextCursor>
#include <QtWidgets/QPlainTextEdit>

#include <functional>

namespace HostShell {

class CallCompletion;

/// An editor for scripts: line numbers, the calls of functions completed by Tab, an error marked at its line.
///
/// Tab moves the focus on where there is nothing to complete, so that the keyboard gets out; Ctrl+] and Ctrl+[ move
/// lines in and out, and a new line begins where the one above does.
class ScriptEditor : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit ScriptEditor(QWidget* parent = nullptr);
    ~ScriptEditor() override;

    CallCompletion& completion() { return *m_completion; }

    /// Shows the mark and goes to the line. Editing the script takes the mark away.
    /// @param line  from 1
    void markError(int line, const QString& message);
    void clearError();

    /// The line with the mark, 0 when there is none.
    int errorLine() const;

    void indent();
    void unindent();

protected:
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    class LineNumbers;

    void placeLineNumbers();
    void highlight();
    void breakLine();
    void forEachSelectedLine(const std::function<void(QTextCursor)>& edit);
    bool showErrorTip(QEvent* event);

    LineNumbers* m_lineNumbers;   // a child
    CallCompletion* m_completion; // a child
    QTextCursor m_error;
    QString m_errorMessage;
};

} // namespace HostShell
