#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QLineEdit>

namespace HostShell {

class ConsoleHistory;

/// A field for one line of script. Up and Down go through what was run before; Return runs the line.
class LineInput : public QLineEdit
{
    Q_OBJECT

public:
    /// @param history  outlives the field
    explicit LineInput(const ConsoleHistory& history, QWidget* parent = nullptr);

Q_SIGNALS:
    /// Return was pressed on a line that is not empty; the field keeps it until `clear`.
    void entered(const QString& line);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void recall(int steps);
    QStringList earlierLines() const;

    const ConsoleHistory& m_history;
    int m_stepsBack = 0;
    QString m_draft; ///< what stood here before the first step back
};

} // namespace HostShell
