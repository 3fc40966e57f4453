#include "host/shell/call_completion.h"

#include <QtCore/QEvent>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringListModel>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>

#include <algorithm>

namespace HostShell {

namespace {

// The names in front agree up to here.
QString commonBeginning(const QStringList& names)
{
    QString common = names.front();
    for (const QString& name : names) {
        while (!name.startsWith(common))
            common.chop(1);
    }
    return common;
}

} // namespace

CallCompletion::CallCompletion(QPlainTextEdit* editor, std::vector<FunctionHelp> functions)
    : QObject{editor}, m_editor{editor}, m_functions{std::move(functions)}, m_completer{new QCompleter{this}}
{
    m_completer->setWidget(editor);
    m_completer->setModel(new QStringListModel{m_completer});
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->popup()->setAccessibleName(tr("Functions that begin so"));
    connect(m_completer, qOverload<const QString&>(&QCompleter::activated), this, &CallCompletion::replaceBegunName);
    connect(editor, &QPlainTextEdit::textChanged, this, &CallCompletion::followTyping);
    editor->installEventFilter(this);
}

bool CallCompletion::complete()
{
    if (m_editor->textCursor().hasSelection())
        return goToNextArgument();
    const QString begun = begunName();
    const QStringList names = namesFrom(begun);
    if (names.isEmpty() || (isCall() && names.contains(begun)))
        return goToNextArgument();
    if (names.size() == 1) {
        replaceBegunName(names.front());
        return true;
    }
    m_editor->insertPlainText(commonBeginning(names).mid(begun.size()));
    offer(names);
    return true;
}

bool CallCompletion::goToNextArgument()
{
    while (!m_stops.empty()) {
        const QTextCursor stop = m_stops.front();
        m_stops.pop_front();
        // the user went elsewhere: what was left open there is not waited for
        if (stop.block() != m_editor->textCursor().block()) {
            m_stops.clear();
            return false;
        }
        if (stop.selectionEnd() <= m_editor->textCursor().position())
            continue;
        m_editor->setTextCursor(stop);
        return true;
    }
    return false;
}

bool CallCompletion::takes(const QKeyEvent& key) const
{
    const auto keys = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Backtab};
    return m_completer->popup()->isVisible() && std::find(keys.begin(), keys.end(), key.key()) != keys.end();
}

const FunctionHelp* CallCompletion::find(const QString& name) const
{
    const auto found = std::find_if(m_functions.begin(), m_functions.end(),
                                    [&name](const FunctionHelp& function) { return function.name == name; });
    return found == m_functions.end() ? nullptr : &*found;
}

QStringList CallCompletion::namesFrom(const QString& prefix) const
{
    QStringList names;
    if (prefix.isEmpty())
        return names;
    for (const FunctionHelp& function : m_functions) {
        if (function.name.startsWith(prefix))
            names.append(function.name);
    }
    return names;
}

bool CallCompletion::isCall() const
{
    return m_editor->document()->characterAt(m_editor->textCursor().position()) == QLatin1Char{'('};
}

QString CallCompletion::begunName() const
{
    const QTextCursor cursor = m_editor->textCursor();
    static const QRegularExpression lastWord{QStringLiteral("[\\w$]+$")};
    return lastWord.match(cursor.block().text().left(cursor.positionInBlock())).captured();
}

const FunctionHelp* CallCompletion::atCursor() const
{
    const QTextCursor cursor = m_editor->textCursor();
    static const QRegularExpression restOfWord{QStringLiteral("^[\\w$]*")};
    return find(begunName() + restOfWord.match(cursor.block().text().mid(cursor.positionInBlock())).captured());
}

void CallCompletion::insertCall(const QString& name)
{
    if (const FunctionHelp* function = find(name))
        putCall(m_editor->textCursor(), *function);
}

void CallCompletion::replaceBegunName(const QString& name)
{
    QTextCursor cursor = m_editor->textCursor();
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, begunName().size());
    if (const FunctionHelp* function = find(name))
        putCall(cursor, *function);
}

void CallCompletion::putCall(QTextCursor cursor, const FunctionHelp& function)
{
    if (m_editor->document()->characterAt(cursor.selectionEnd()) == QLatin1Char{'('}) {
        // the call has its arguments already
        cursor.insertText(function.name);
        return;
    }
    std::vector<std::pair<int, int>> places;
    cursor.beginEditBlock();
    cursor.insertText(function.name + QLatin1Char{'('});
    const bool takesNothing = function.signature.endsWith(QStringLiteral("()"));
    if (function.required.isEmpty() && !takesNothing)
        places.emplace_back(cursor.position(), cursor.position());
    for (const QString& argument : function.required) {
        if (!places.empty())
            cursor.insertText(QStringLiteral(", "));
        const int start = cursor.position();
        cursor.insertText(argument);
        places.emplace_back(start, cursor.position());
    }
    cursor.insertText(QStringLiteral(")"));
    places.emplace_back(cursor.position(), cursor.position());
    cursor.endEditBlock();

    std::deque<QTextCursor> stops;
    for (const auto& [start, end] : places) {
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        stops.push_back(cursor);
    }
    m_stops.insert(m_stops.begin(), stops.begin(), stops.end());
    m_editor->setTextCursor(m_stops.front());
    m_stops.pop_front();
    m_editor->setFocus();
    Q_EMIT inserted(function.signature);
}

void CallCompletion::offer(const QStringList& names)
{
    static_cast<QStringListModel*>(m_completer->model())->setStringList(names);
    QAbstractItemView* popup = m_completer->popup();
    popup->setCurrentIndex(m_completer->completionModel()->index(0, 0));
    QRect place = m_editor->cursorRect();
    place.setWidth(popup->sizeHintForColumn(0) + popup->verticalScrollBar()->sizeHint().width() +
                   2 * popup->frameWidth());
    m_completer->complete(place);
}

void CallCompletion::followTyping()
{
    if (!m_completer->popup()->isVisible())
        return;
    const QStringList names = namesFrom(begunName());
    if (names.isEmpty())
        m_completer->popup()->hide();
    else
        offer(names);
}

bool CallCompletion::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape)
        m_stops.clear();
    return false;
}

} // namespace HostShell
