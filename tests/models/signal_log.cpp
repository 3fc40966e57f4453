#include "tests/models/signal_log.h"

#include <utility>

namespace {

QString position(const QModelIndex& index)
{
    return index.isValid() ? QStringLiteral("%1,%2").arg(index.row()).arg(index.column()) : QStringLiteral("none");
}

QString rows(const char* signal, const QModelIndex& parent, int first, int last)
{
    const QString name = parent.isValid() ? parent.data().toString() : QStringLiteral("/");
    return QStringLiteral("%1 %2 %3-%4").arg(QLatin1String{signal}, name).arg(first).arg(last);
}

QString roleTexts(const QVector<int>& roles)
{
    QStringList texts;
    for (const int role : roles)
        texts += QString::number(role);
    return texts.join(QLatin1Char{' '});
}

} // namespace

SignalLog::SignalLog(const QAbstractItemModel& model)
{
    using Model = QAbstractItemModel;
    const auto logRows = [&](auto signal, const char* name) {
        connect(&model, signal, this,
                [=, this](const QModelIndex& parent, int first, int last) { add(rows(name, parent, first, last)); });
    };
    const auto log = [&](auto signal, const char* name) {
        connect(&model, signal, this, [=, this] { add(QLatin1String{name}); });
    };
    logRows(&Model::rowsAboutToBeInserted, "rowsAboutToBeInserted");
    logRows(&Model::rowsInserted, "rowsInserted");
    logRows(&Model::rowsAboutToBeRemoved, "rowsAboutToBeRemoved");
    logRows(&Model::rowsRemoved, "rowsRemoved");
    log(&Model::modelAboutToBeReset, "modelAboutToBeReset");
    log(&Model::modelReset, "modelReset");
    log(&Model::layoutAboutToBeChanged, "layoutAboutToBeChanged");
    log(&Model::layoutChanged, "layoutChanged");
    log(&Model::rowsMoved, "rowsMoved");
    log(&Model::columnsInserted, "columnsInserted");
    log(&Model::headerDataChanged, "headerDataChanged");
    connect(
        &model, &Model::dataChanged, this,
        [this](const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) {
            add(QStringLiteral("dataChanged %1 %2 roles %3").arg(position(first), position(last), roleTexts(roles)));
        });
}

std::string SignalLog::take()
{
    const QStringList lines = std::exchange(m_lines, {});
    return lines.isEmpty() ? std::string{} : (lines.join(QLatin1Char{'\n'}) + QLatin1Char{'\n'}).toStdString();
}
