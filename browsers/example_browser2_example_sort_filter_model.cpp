#include "browsers/example_browser2_example_sort_filter_model.h"

#include "browsers/example_browser2_example_model.h"

#include <algorithm>

using Model = ExampleBrowser2ExampleModel;

namespace {

QStringList searchedTexts(const QModelIndex& source)
{
    QStringList texts;
    for (const int role : {Model::TitleRole, Model::DescriptionRole, Model::ManufacturerRole})
        texts += source.data(role).toString();
    return texts + source.data(Model::KeywordsRole).toStringList();
}

} // namespace

ExampleBrowser2ExampleSortFilterModel::ExampleBrowser2ExampleSortFilterModel(QObject* parent)
    : QSortFilterProxyModel{parent}
{
}

void ExampleBrowser2ExampleSortFilterModel::setSourceModel(QAbstractItemModel* source)
{
    if (source == sourceModel())
        return;
    if (sourceModel() != nullptr)
        sourceModel()->disconnect(this);
    m_foldedTexts.clear();
    // ahead of the base class's connections, since that filters rows as soon as it hears of a change
    if (source != nullptr) {
        const auto forget = [this] { m_foldedTexts.clear(); };
        connect(source, &QAbstractItemModel::dataChanged, this, forget);
        connect(source, &QAbstractItemModel::rowsInserted, this, forget);
        connect(source, &QAbstractItemModel::rowsRemoved, this, forget);
        connect(source, &QAbstractItemModel::rowsMoved, this, forget);
        connect(source, &QAbstractItemModel::layoutChanged, this, forget);
        connect(source, &QAbstractItemModel::modelReset, this, forget);
    }
    QSortFilterProxyModel::setSourceModel(source);
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
    if (m_matcher.isEmpty())
        return true;
    if (m_matcher.isWord() && !source.parent().isValid())
        return m_matcher.isWordIn(foldedTexts(source));
    const QStringList texts = searchedTexts(source);
    return std::ranges::any_of(texts, [this](const QString& text) { return m_matcher.isFoundIn(text); });
}

const QString& ExampleBrowser2ExampleSortFilterModel::foldedTexts(const QModelIndex& source) const
{
    if (m_foldedTexts.empty())
        m_foldedTexts.resize(static_cast<std::size_t>(sourceModel()->rowCount()));
    QString& texts = m_foldedTexts[static_cast<std::size_t>(source.row())];
    if (texts.isNull()) {
        // no word holds a line feed, so that none reaches from one text into the next
        texts = PatternMatcher::folded(searchedTexts(source).join(QLatin1Char{'\n'}));
    }
    return texts;
}
