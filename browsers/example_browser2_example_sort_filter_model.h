#pragma once

#include "browsers/pattern_matcher.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QStringList>

/// Shows the examples of the checked manufacturers that the search pattern is found in, in the source's order.
///
/// The pattern is `filterRegularExpression()`; key column, role and case sensitivity of the base class play no part.
class ExampleBrowser2ExampleSortFilterModel : public QSortFilterProxyModel
{
public:
    explicit ExampleBrowser2ExampleSortFilterModel(QObject* parent = nullptr);

    /// Shows only examples whose manufacturer equals one of these, case apart; all of them for the empty list.
    void setManufacturers(const QStringList& manufacturers);

protected:
    bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;

private:
    bool acceptsManufacturer(const QModelIndex& source) const;
    bool matchesSearch(const QModelIndex& source) const;

    QStringList m_manufacturers;
    mutable PatternMatcher m_matcher;
};
