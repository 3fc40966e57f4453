#include "browsers/examples_sort_filter_proxy_model.h"

#include "browsers/examples_model.h"

#include <algorithm>

ExamplesSortFilterProxyModel::ExamplesSortFilterProxyModel(QObject* parent) : QSortFilterProxyModel{parent} {}

bool ExamplesSortFilterProxyModel::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const
{
    const QModelIndex source = sourceModel()->index(source_row, 0, source_parent);
    if (!source.isValid())
        return false;
    m_matcher.setPattern(filterRegularExpression());
    if (m_matcher.isFoundIn(source.data(ExamplesModel::TitleRole).toString()) ||
        m_matcher.isFoundIn(source.data(ExamplesModel::DescriptionRole).toString()))
        return true;
    const QStringList keywords = source.data(ExamplesModel::KeywordsRole).toStringList();
    return std::ranges::any_of(keywords, [this](const QString& keyword) { return m_matcher.isFoundIn(keyword); });
}
