#include "browsers/example_browser2_example_sort_filter_model.h"

#include "browsers/example_browser2_example_model.h"

#include <algorithm>

using Model = ExampleBrowser2ExampleModel;

ExampleBrowser2ExampleSortFilterModel::ExampleBrowser2ExampleSortFilterModel(QObject* parent)
    : QSortFilterProxyModel{parent}
{
}

void ExampleBrowser2ExampleSortFilterModel::setManufacturers(const QStringList& manufacturers)
{
    leaveHeldRows();
    m_manufacturers = manufacturers;
    m_matcher.startPass();
    invalidateFilter();
}

void ExampleBrowser2ExampleSortFilterModel::setFilterRegularExpression(const QRegularExpression& pattern)
{
    leaveHeldRows();
    QSortFilterProxyModel::setFilterRegularExpression(pattern);
}

/// The base class takes rows out and puts them in stretch by stretch, and for each stretch it works its table of all
/// rows out anew. A search may leave every seventh row: thousands of stretches. This makes them as many as rows are
/// held.
void ExampleBrowser2ExampleSortFilterModel::leaveHeldRows()
{
    if (sourceModel() == nullptr || sourceModel()->rowCount() < longList)
        return;
    for (const QModelIndex& held : persistentIndexList())
        m_heldRows.insert(mapToSource(held).row());
    m_isLeavingHeldRows = true;
    invalidateFilter();
    m_isLeavingHeldRows = false;
    m_heldRows.clear();
}

bool ExampleBrowser2ExampleSortFilterModel::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const
{
    const QModelIndex source = sourceModel()->index(source_row, 0, source_parent);
    // The model announces one row more than it has; without this the view would show an empty row at the end.
    if (!source.isValid())
        return false;
    if (m_isLeavingHeldRows)
        return m_heldRows.contains(source_row);
    return acceptsManufacturer(source) && matchesSearch(source);
}

bool ExampleBrowser2ExampleSortFilterModel::acceptsManufacturer(const QModelIndex& source) const
{
    if (m_manufacturers.isEmpty())
        return true;
    return m_manufacturers.contains(source.data(Model::ManufacturerRole).toString(), Qt::CaseInsensitive);
}

bool ExampleBrowser2ExampleSortFilterModel::matchesSearch(const QModelIndex& source) const
{
    m_matcher.setPattern(filterRegularExpression());
    for (const int role : {Model::TitleRole, Model::DescriptionRole, Model::ManufacturerRole}) {
        if (m_matcher.isFoundIn(source.data(role).toString()))
            return true;
    }
    const QStringList keywords = source.data(Model::KeywordsRole).toStringList();
    return std::ranges::any_of(keywords, [this](const QString& keyword) { return m_matcher.isFoundIn(keyword); });
}
