#pragma once

#include <QtCore/QAbstractItemModel>

#include <string>
#include <vector>

/// What a dump shows of each row.
struct DumpedCells
{
    std::vector<int> columns = {0};
    std::vector<int> roles = {Qt::DisplayRole};
};

/// A tree as text: one line for each row, two blanks for each level, " | " between cells and between the roles of one.
/// An invalid variant shows as "-", an icon as the colour of its centre. Rows below `root` only.
///
///     EXPECT_EQ(dump(model), "Parts\n  content\n    a.txt\nRelationships\n");
///
/// Rows are followed through `hasChildren`, as views do it, and 20 levels deep at most.
std::string dump(const QAbstractItemModel& model, const QModelIndex& root = {}, const DumpedCells& cells = {});

/// The first row, from the top, with that text in column 0, at any depth; invalid when there is none.
QModelIndex rowNamed(const QAbstractItemModel& model, const QString& text, const QModelIndex& root = {});
