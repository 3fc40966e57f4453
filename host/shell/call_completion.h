#pragma once

#include "host/shell/function_help.h"

#include <QtCore/QObject>
#include <QtGui/QTextCursor>

#include <deque>
#include <vector>

class QCompleter;
class QKeyEvent;
class QPlainTextEdit;

namespace HostShell {

/// Completes the name of a function in an editor, and then its arguments.
///
/// A begun name becomes a call with the names of its required arguments, of which the first is selected; each further
/// `complete` selects the next one, and after the last the cursor stands behind the call.
class CallCompletion : public QObject
{
    Q_OBJECT

public:
    /// @param editor  also the parent
    CallCompletion(QPlainTextEdit* editor, std::vector<FunctionHelp> functions);

    /// Completes what stands before the cursor, with a list to choose from where several names begin so.
    /// @return  whether there was something to do
    bool complete();

    /// Whether the list to choose from is there and takes the key.
    bool takes(const QKeyEvent& key) const;

    /// Puts a call in the place of the selection, or at the cursor.
    void insertCall(const QString& name);

    /// The function whose name the cursor touches; null when there is none.
    const FunctionHelp* atCursor() const;

    bool eventFilter(QObject* receiver, QEvent* event) override;

Q_SIGNALS:
    /// A call was put in; for a line that tells its arguments, the optional ones too.
    void inserted(const QString& signature);

private:
    const FunctionHelp* find(const QString& name) const;
    QStringList namesFrom(const QString& prefix) const;
    QString begunName() const;
    bool isCall() const;
    void replaceBegunName(const QString& name);
    void putCall(QTextCursor cursor, const FunctionHelp& function);
    void offer(const QStringList& names);
    void followTyping();
    bool goToNextArgument();

    QPlainTextEdit* m_editor;
    std::vector<FunctionHelp> m_functions;
    QCompleter* m_completer; // a child

    /// Arguments that were put in and not visited yet, and behind each call its end.
    std::deque<QTextCursor> m_stops;
};

} // namespace HostShell
