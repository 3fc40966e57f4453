#include "host/shell/console_history.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <optional>
#include <utility>

#include <unistd.h>

namespace HostShell {

namespace {

// As many are kept; the file is made shorter when it holds twice as many.
constexpr int longest = 500;

// JSON has strings inside of arrays only.
QByteArray toLine(const QString& text)
{
    return QJsonDocument{QJsonArray{text}}.toJson(QJsonDocument::Compact) + '\n';
}

std::optional<QString> toText(const QByteArray& line)
{
    const QJsonArray array = QJsonDocument::fromJson(line).array();
    if (array.size() != 1 || !array.first().isString())
        return std::nullopt;
    return array.first().toString();
}

QString whyNotWritten(const QFileDevice& file)
{
    return QCoreApplication::translate("HostShell::ConsoleHistory", "Cannot write the history %1: %2")
        .arg(file.fileName(), file.errorString());
}

} // namespace

ConsoleHistory::ConsoleHistory(const QString& path) : m_path{path}
{
    QFile file{path};
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return;
    while (!file.atEnd()) {
        ++m_lines;
        const QByteArray line = file.readLine();
        m_isTorn = !line.endsWith('\n');
        if (const auto text = toText(line))
            m_texts.append(*text);
    }
    m_texts = m_texts.mid(std::max(0, m_texts.size() - longest));
}

QString ConsoleHistory::add(const QString& text)
{
    if (text.trimmed().isEmpty() || (!m_texts.isEmpty() && m_texts.last() == text))
        return {};
    m_texts.append(text);
    if (m_texts.size() > longest)
        m_texts.removeFirst();
    if (m_path.isEmpty())
        return {};
    if (++m_lines <= 2 * longest)
        return append(toLine(text));
    m_lines = m_texts.size();
    return rewrite();
}

QString ConsoleHistory::append(QByteArray line)
{
    if (std::exchange(m_isTorn, false))
        line.prepend('\n');
    QDir{}.mkpath(QFileInfo{m_path}.absolutePath());
    QFile file{m_path};
    if (!file.open(QIODevice::Append) || file.write(line) != line.size() || !file.flush() || fsync(file.handle()) != 0)
        return whyNotWritten(file);
    return {};
}

QString ConsoleHistory::rewrite() const
{
    QSaveFile file{m_path};
    if (!file.open(QIODevice::WriteOnly))
        return whyNotWritten(file);
    for (const QString& text : m_texts)
        file.write(toLine(text));
    return file.commit() ? QString{} : whyNotWritten(file);
}

} // namespace HostShell
