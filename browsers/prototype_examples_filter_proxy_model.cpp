#include "browsers/prototype_examples_filter_proxy_model.h"

namespace {

constexpr int descriptionColumn = 1;
constexpr int keywordsColumn = 2;

} // namespace

PrototypeExamplesFilterProxyModel::PrototypeExamplesFilterProxyModel(QObject* parent) : QSortFilterProxyModel{parent} {}

bool PrototypeExamplesFilterProxyModel::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const
{
    const QModelIndex description = sourceModel()->index(source_row, descriptionColumn, source_parent);
    const QModelIndex keywords = sourceModel()->index(source_row, keywordsColumn, source_parent);
    if (!description.isValid() || !keywords.isValid())
        return false;
    m_matcher.setPattern(filterRegularExpression());
    // The keywords are searched as they are shown, joined, so that a pattern can lead from one into the next.
    return m_matcher.isFoundIn(description.data(Qt::DisplayRole).toString()) ||
           m_matcher.isFoundIn(keywords.data(Qt::DisplayRole).toString());
}
