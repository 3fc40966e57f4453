#include "tests/support/model_rules.h"

#include <gtest/gtest.h>

namespace {

void collectRows(const QAbstractItemModel& model, const QModelIndex& parent, std::vector<QModelIndex>& rows)
{
    if (!model.hasChildren(parent))
        return;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        rows.push_back(index);
        collectRows(model, index, rows);
    }
}

void expectCell(const QAbstractItemModel& model, int row, int column, const QModelIndex& parent)
{
    const QModelIndex cell = model.index(row, column, parent);
    ASSERT_TRUE(cell.isValid()) << row << ", " << column;
    EXPECT_EQ(cell.row(), row);
    EXPECT_EQ(cell.column(), column);
    EXPECT_EQ(cell.parent(), parent);
    (void)model.flags(cell);
    for (int role = 0; role < Qt::UserRole + 10; ++role)
        (void)model.data(cell, role);
}

} // namespace

std::vector<QModelIndex> everyRow(const QAbstractItemModel& model, const QModelIndex& parent)
{
    std::vector<QModelIndex> rows;
    collectRows(model, parent, rows);
    return rows;
}

void expectTree(const QAbstractItemModel& model, const QModelIndex& parent)
{
    if (!model.hasChildren(parent))
        return;
    const int rows = model.rowCount(parent);
    const int columns = model.columnCount(parent);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            expectCell(model, row, column, parent);
        expectTree(model, model.index(row, 0, parent));
    }
    EXPECT_FALSE(model.index(rows, 0, parent).isValid());
    EXPECT_FALSE(model.index(0, columns, parent).isValid());
}
