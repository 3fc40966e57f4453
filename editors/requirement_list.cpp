#include "editors/requirement_list.h"

#include <QtGui/QPixmap>

#include <algorithm>
#include <cstddef>

namespace Kelvaris::System::IO::Bundle::detail {

RequirementList::RequirementList(QObject* parent) : QAbstractListModel{parent}
{
    QPixmap square{100, 100};
    square.fill(Qt::green);
    m_fulfilledIcon = QIcon{square};
    square.fill(Qt::red);
    m_unfulfilledIcon = QIcon{square};
}

RequirementList::~RequirementList() = default;

int RequirementList::rowCount(const QModelIndex&) const
{
    return static_cast<int>(m_requirements.size());
}

QVariant RequirementList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Requirement& requirement = m_requirements[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole)
        return requirement.text;
    if (role == Qt::DecorationRole)
        return requirement.fulfilled ? m_fulfilledIcon : m_unfulfilledIcon;
    return {};
}

void RequirementList::addRequirement(int id, const QString& text, bool fulfilled)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_requirements.push_back({id, text, fulfilled});
    endInsertRows();
    reportStatus();
}

void RequirementList::setRequirementFulfilled(int id, bool fulfilled)
{
    const auto found = std::find_if(m_requirements.begin(), m_requirements.end(),
                                    [id](const Requirement& each) { return each.id == id; });
    if (found == m_requirements.end())
        return;
    found->fulfilled = fulfilled;
    // Counted from the end, which is the row itself only where both distances agree; for the first requirement it is
    // one past the last and so no index at all. The owner's decision rests on the status below, never on this signal.
    const QModelIndex changed = index(static_cast<int>(m_requirements.end() - found), 0);
    Q_EMIT dataChanged(changed, changed, {Qt::DecorationRole});
    reportStatus();
}

void RequirementList::reportStatus()
{
    const auto fulfilled = std::count_if(m_requirements.begin(), m_requirements.end(),
                                         [](const Requirement& each) { return each.fulfilled; });
    Q_EMIT fulfillmentStatusChanged(static_cast<int>(fulfilled), rowCount());
}

} // namespace Kelvaris::System::IO::Bundle::detail
