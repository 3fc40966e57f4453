#include "host/shell/script_editor.h"

#include "host/shell/call_completion.h"
#include "host/shell/fixed_font.h"
#include "host/shell/shell_icons.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QTextBlock>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace HostShell {

namespace {

const QString indentation = QStringLiteral("    ");

QColor mixed(const QColor& first, const QColor& second, qreal partOfSecond)
{
    const auto mix = [partOfSecond](qreal a, qreal b) { return a + (b - a) * partOfSecond; };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

} // namespace

/// The strip beside the text. It knows nothing of the text but what the editor's blocks tell.
class ScriptEditor::LineNumbers : public QWidget
{
public:
    explicit LineNumbers(ScriptEditor* editor) : QWidget{editor}, m_editor{editor} {}

    int neededWidth() const
    {
        const int digits = QString::number(m_editor->blockCount()).size();
        return iconSize() + 3 * gap + fontMetrics().horizontalAdvance(QLatin1Char{'9'}) * qMax(3, digits);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter painter{this};
        painter.fillRect(event->rect(), palette().color(QPalette::Window));
        QTextBlock block = m_editor->firstVisibleBlock();
        QRectF place = m_editor->blockBoundingGeometry(block).translated(m_editor->contentOffset());
        while (block.isValid() && place.top() <= event->rect().bottom()) {
            paintLine(painter, block.blockNumber() + 1, QRectF{0, place.top(), qreal(width()), lineHeight()});
            block = block.next();
            place = m_editor->blockBoundingGeometry(block).translated(m_editor->contentOffset());
        }
    }

private:
    static constexpr int gap = 4;

    int iconSize() const { return fontMetrics().height(); }
    qreal lineHeight() const { return m_editor->fontMetrics().height(); }

    void paintLine(QPainter& painter, int number, const QRectF& place) const
    {
        const bool isCurrent = number == m_editor->textCursor().blockNumber() + 1;
        painter.setPen(isCurrent
                           ? palette().color(QPalette::WindowText)
                           : mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.35));
        painter.drawText(place.adjusted(0, 0, -gap, 0), Qt::AlignRight | Qt::AlignVCenter, QString::number(number));
        if (number == m_editor->errorLine())
            shellIcon(QStringLiteral("dialog-error"))
                .paint(&painter, QRect{gap, qRound(place.top()), iconSize(), iconSize()});
    }

    ScriptEditor* m_editor;
};

ScriptEditor::ScriptEditor(QWidget* parent)
    : QPlainTextEdit{parent}, m_lineNumbers{new LineNumbers{this}}, m_completion{new CallCompletion{this, helpOfAll()}}
{
    setFont(fixedFont());
    setLineWrapMode(NoWrap);
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &ScriptEditor::placeLineNumbers);
    connect(this, &QPlainTextEdit::updateRequest, m_lineNumbers, qOverload<>(&QWidget::update));
    connect(this, &QPlainTextEdit::cursorPositionChanged, m_lineNumbers, qOverload<>(&QWidget::update));
    connect(document(), &QTextDocument::contentsChange, this, [this](int, int removed, int added) {
        if (removed != 0 || added != 0)
            clearError();
    });
    placeLineNumbers();
}

ScriptEditor::~ScriptEditor() = default;

void ScriptEditor::markError(int line, const QString& message)
{
    const QTextBlock block = document()->findBlockByNumber(line - 1);
    if (!block.isValid())
        return;
    m_error = QTextCursor{block};
    m_errorMessage = message;
    setTextCursor(m_error);
    centerCursor();
    highlight();
}

void ScriptEditor::clearError()
{
    if (m_error.isNull())
        return;
    m_error = {};
    m_errorMessage.clear();
    highlight();
}

int ScriptEditor::errorLine() const
{
    return m_error.isNull() ? 0 : m_error.blockNumber() + 1;
}

void ScriptEditor::highlight()
{
    QList<QTextEdit::ExtraSelection> selections;
    if (!m_error.isNull()) {
        QTextEdit::ExtraSelection line;
        line.cursor = m_error;
        line.format.setBackground(mixed(palette().color(QPalette::Base), palette().color(QPalette::Highlight), 0.3));
        line.format.setProperty(QTextFormat::FullWidthSelection, true);
        selections.append(line);
    }
    setExtraSelections(selections);
    m_lineNumbers->update();
}

bool ScriptEditor::focusNextPrevChild(bool next)
{
    if (next && textCursor().hasSelection() && textCursor().selectedText().contains(QChar::ParagraphSeparator)) {
        indent();
        return true;
    }
    return (next && m_completion->complete()) || QPlainTextEdit::focusNextPrevChild(next);
}

void ScriptEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return breakLine();
    QPlainTextEdit::keyPressEvent(event);
}

void ScriptEditor::breakLine()
{
    const QTextCursor cursor = textCursor();
    const QString before = cursor.block().text().left(cursor.positionInBlock());
    const auto firstOther = std::find_if(before.begin(), before.end(), [](QChar c) { return !c.isSpace(); });
    insertPlainText(QLatin1Char{'\n'} + before.left(static_cast<int>(firstOther - before.begin())));
    ensureCursorVisible();
}

void ScriptEditor::indent()
{
    forEachSelectedLine([](QTextCursor line) { line.insertText(indentation); });
}

void ScriptEditor::unindent()
{
    forEachSelectedLine([](QTextCursor line) {
        for (int i = 0; i < indentation.size() && line.block().text().startsWith(QLatin1Char{' '}); ++i)
            line.deleteChar();
    });
}

void ScriptEditor::forEachSelectedLine(const std::function<void(QTextCursor)>& edit)
{
    const QTextCursor selection = textCursor();
    QTextBlock block = document()->findBlock(selection.selectionStart());
    const QTextBlock last = document()->findBlock(selection.selectionEnd());
    QTextCursor all{document()};
    all.beginEditBlock();
    for (; block.isValid() && block.blockNumber() <= last.blockNumber(); block = block.next())
        edit(QTextCursor{block});
    all.endEditBlock();
}

void ScriptEditor::placeLineNumbers()
{
    m_lineNumbers->setFont(font());
    setViewportMargins(m_lineNumbers->neededWidth(), 0, 0, 0);
    const QRect inside = contentsRect();
    m_lineNumbers->setGeometry(inside.left(), inside.top(), m_lineNumbers->neededWidth(), inside.height());
}

void ScriptEditor::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    placeLineNumbers();
}

void ScriptEditor::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        placeLineNumbers();
    if (event->type() == QEvent::PaletteChange)
        highlight();
}

bool ScriptEditor::event(QEvent* event)
{
    if (event->type() == QEvent::KeyPress && m_completion->takes(static_cast<const QKeyEvent&>(*event))) {
        // an ignored key goes on to the list
        event->ignore();
        return true;
    }
    return (event->type() == QEvent::ToolTip && showErrorTip(event)) || QPlainTextEdit::event(event);
}

bool ScriptEditor::showErrorTip(QEvent* event)
{
    const auto* help = static_cast<QHelpEvent*>(event);
    const QPoint inText = viewport()->mapFrom(this, help->pos());
    if (m_error.isNull() || cursorForPosition(inText).blockNumber() != m_error.blockNumber())
        return false;
    QToolTip::showText(help->globalPos(), m_errorMessage.toHtmlEscaped(), this);
    return true;
}

} // namespace HostShell
