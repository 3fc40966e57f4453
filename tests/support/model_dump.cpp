#include "tests/support/model_dump.h"

#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

namespace {

constexpr int maximumDepth = 20;

std::string textOf(const QVariant& value)
{
    if (!value.isValid())
        return "-";
    if (value.userType() == QMetaType::QIcon) {
        const QImage image = value.value<QIcon>().pixmap(8, 8).toImage();
        return image.isNull() ? "no icon" : image.pixelColor(4, 4).name().toStdString();
    }
    return value.toString().toStdString();
}

std::string rowText(const QAbstractItemModel& model, int row, const QModelIndex& parent, const DumpedCells& cells)
{
    std::string line;
    for (const int column : cells.columns) {
        for (const int role : cells.roles) {
            if (column != cells.columns.front() || role != cells.roles.front())
                line += " | ";
            line += textOf(model.index(row, column, parent).data(role));
        }
    }
    return line;
}

void dumpRows(const QAbstractItemModel& model, const QModelIndex& parent, const DumpedCells& cells, int depth,
              std::string& text)
{
    if (depth == maximumDepth || !model.hasChildren(parent))
        return;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        text += std::string(2 * static_cast<std::size_t>(depth), ' ') + rowText(model, row, parent, cells) + '\n';
        dumpRows(model, model.index(row, 0, parent), cells, depth + 1, text);
    }
}

} // namespace

std::string dump(const QAbstractItemModel& model, const QModelIndex& root, const DumpedCells& cells)
{
    std::string text;
    dumpRows(model, root, cells, 0, text);
    return text;
}

QModelIndex rowNamed(const QAbstractItemModel& model, const QString& text, const QModelIndex& root)
{
    for (int row = 0; row < model.rowCount(root); ++row) {
        const QModelIndex index = model.index(row, 0, root);
        if (index.data().toString() == text)
            return index;
        const QModelIndex below = model.hasChildren(index) ? rowNamed(model, text, index) : QModelIndex{};
        if (below.isValid())
            return below;
    }
    return {};
}
