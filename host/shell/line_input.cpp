#include "host/shell/line_input.h"

#include "host/shell/console_history.h"

#include <QtGui/QKeyEvent>

#include <algorithm>
#include <utility>

namespace HostShell {

LineInput::LineInput(const ConsoleHistory& history, QWidget* parent) : QLineEdit{parent}, m_history{history}
{
    connect(this, &QLineEdit::textEdited, this, [this] { m_stepsBack = 0; });
    connect(this, &QLineEdit::returnPressed, this, [this] {
        m_stepsBack = 0;
        if (!text().trimmed().isEmpty())
            Q_EMIT entered(text());
    });
}

void LineInput::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        return recall(1);
    case Qt::Key_Down:
        return recall(-1);
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void LineInput::recall(int steps)
{
    const QStringList lines = earlierLines();
    if (m_stepsBack == 0)
        m_draft = text();
    m_stepsBack = std::clamp(m_stepsBack + steps, 0, static_cast<int>(lines.size()));
    setText(m_stepsBack == 0 ? m_draft : lines.at(lines.size() - m_stepsBack));
}

QStringList LineInput::earlierLines() const
{
    QStringList lines = m_history.texts();
    const auto isLong = [](const QString& text) { return text.contains(QLatin1Char{'\n'}); };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isLong), lines.end());
    return lines;
}

} // namespace HostShell
