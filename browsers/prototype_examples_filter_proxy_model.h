#pragma once

#include "browsers/pattern_matcher.h"

#include <QtCore/QSortFilterProxyModel>

/// Shows the bundles in whose description or keywords `filterRegularExpression()` is found. The title takes no part in
/// the search, and the filter role is not asked.
class PrototypeExamplesFilterProxyModel : public QSortFilterProxyModel
{
public:
    explicit PrototypeExamplesFilterProxyModel(QObject* parent = nullptr);

protected:
    bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;

private:
    mutable PatternMatcher m_matcher;
};
