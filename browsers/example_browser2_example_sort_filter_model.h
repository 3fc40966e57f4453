#pragma once

#include "browsers/pattern_matcher.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QStringList>

#include <vector>

/// Shows the examples of the checked manufacturers that the search pattern is found in, in the source's order.
///
/// The pattern is `filterRegularExpression()`; key column, role and case sensitivity of the base class play no part.
///
/// When the filter of a long list changes, rows that nobody holds an index of go and come back: at most a few stretches
/// are announced, with a held row (the current one, those that are selected) at the end of each.
class ExampleBrowser2ExampleSortFilterModel : public QSortFilterProxyModel
{
public:
    /// From so many rows on a list is long.
    static constexpr int longList = 1000;

    explicit ExampleBrowser2ExampleSortFilterModel(QObject* parent = nullptr);

    void setSourceModel(QAbstractItemModel* source) override;

    /// The base class's, in a time that grows with the rows and not with their square.
    void setFilterRegularExpression(const QRegularExpression& pattern);

    /// Shows only examples whose manufacturer equals one of these, case apart; all of them for the empty list.
    void setManufacturers(const QStringList& manufacturers);

protected:
    bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;

private:
    void leaveHeldRows();
    bool acceptsManufacturer(const QModelIndex& source) const;
    bool matchesSearch(const QModelIndex& source) const;
    const QString& foldedTexts(const QModelIndex& source) const;

    QStringList m_manufacturers;
    /// All that is searched of each top row of the source, folded; null until it was needed. To ask the source for five
    /// texts of ten thousand rows takes as long as everything else about a key press.
    mutable std::vector<QString> m_foldedTexts;
    QSet<int> m_heldRows; // of the source; all that is left while others go
    bool m_isLeavingHeldRows = false;
    mutable PatternMatcher m_matcher;
};
