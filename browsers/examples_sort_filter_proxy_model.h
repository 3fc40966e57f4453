#pragma once

#include "browsers/pattern_matcher.h"

#include <QtCore/QSortFilterProxyModel>

/// Shows the examples whose title, description or one of whose keywords `filterRegularExpression()` is found in.
class ExamplesSortFilterProxyModel : public QSortFilterProxyModel
{
public:
    explicit ExamplesSortFilterProxyModel(QObject* parent = nullptr);

protected:
    bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;

private:
    mutable PatternMatcher m_matcher;
};
