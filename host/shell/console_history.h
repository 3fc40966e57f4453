#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace HostShell {

/// What was run in the console, one text after the other, in a file that outlives it.
///
/// A text is on the disk when `add` returns, so that a script that takes the program down with it is not lost. In the
/// file each text is a JSON string on a line of its own; a line that is none, as a crash may leave it, is passed over.
class ConsoleHistory
{
public:
    /// Reads the file; of a long one the newest texts.
    /// @param path  empty for a history that ends with the program
    explicit ConsoleHistory(const QString& path);

    /// Oldest first.
    const QStringList& texts() const { return m_texts; }

    /// Adds a text, unless it is empty or the newest one already.
    /// @return  why it could not be written, as one sentence; the history has it all the same. Empty when all went
    /// well.
    QString add(const QString& text);

private:
    QString append(QByteArray line);
    QString rewrite() const;

    QString m_path;
    QStringList m_texts;
    int m_lines = 0;       ///< in the file
    bool m_isTorn = false; ///< the last one has no end
};

} // namespace HostShell
