#pragma once

#include <QtCore/QAbstractItemModel>
#include <QtCore/QStringList>

#include <string>

/// Every signal of a model in the order in which they came, as short lines:
///
///     modelAboutToBeReset
///     rowsInserted content 1-1
///     dataChanged 2,0 2,0 roles 0
///
/// The parent of an insertion is named by its text, the top level by "/", the invalid index by "none".
class SignalLog : public QObject
{
public:
    explicit SignalLog(const QAbstractItemModel& model);

    /// The lines so far, each with a line break; the log is empty afterwards.
    std::string take();

private:
    void add(const QString& line) { m_lines += line; }

    QStringList m_lines;
};
