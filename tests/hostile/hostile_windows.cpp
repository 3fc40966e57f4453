#include "tests/hostile/hostile_windows.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

namespace {

constexpr std::size_t enoughRows = 200;
constexpr int enoughLevels = 300;

void collectRows(const QAbstractItemModel& model, const QModelIndex& parent, int level, std::vector<QModelIndex>& rows)
{
    if (level == enoughLevels)
        return;
    for (int row = 0; row < model.rowCount(parent) && rows.size() < enoughRows; ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (!index.isValid()) // some models announce a row more than there is
            continue;
        rows.push_back(index);
        collectRows(model, index, level + 1, rows);
    }
}

void readCells(const QAbstractItemModel& model, const QModelIndex& row)
{
    for (int column = 0; column < model.columnCount(row.parent()); ++column) {
        const QModelIndex cell = row.sibling(row.row(), column);
        (void)model.flags(cell);
        for (const int role : {int{Qt::DisplayRole}, int{Qt::EditRole}, int{Qt::DecorationRole}, int{Qt::ToolTipRole},
                               int{Qt::ForegroundRole}, int{Qt::UserRole}, Qt::UserRole + 1, Qt::UserRole + 2})
            (void)model.data(cell, role);
    }
}

} // namespace

const std::vector<std::string>& openingFunctions()
{
    static const std::vector<std::string> functions{"_create_example_bundle_editor",   "_create_examples_bundle_editor",
                                                    "_proto_scriptable_bundle_editor", "_bundle_viewer",
                                                    "_proto_package_browser",          "_proto_examples_browser2",
                                                    "_proto_example_browser"};
    return functions;
}

std::vector<QWidget*> visibleWindows()
{
    std::vector<QWidget*> windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            windows.push_back(window);
    }
    return windows;
}

void closeAllWindows()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(visibleWindows().empty());
}

std::vector<QModelIndex> rowsOf(const QAbstractItemView& view)
{
    std::vector<QModelIndex> rows;
    if (view.model() != nullptr)
        collectRows(*view.model(), view.rootIndex(), 0, rows);
    return rows;
}

void lookAtEverything(QWidget& window)
{
    QCoreApplication::processEvents();
    for (auto* view : window.findChildren<QAbstractItemView*>()) {
        if (auto* tree = qobject_cast<QTreeView*>(view))
            tree->expandAll();
        for (const QPersistentModelIndex row : rowsOf(*view)) {
            if (!row.isValid())
                continue;
            readCells(*view->model(), row);
            view->setCurrentIndex(row);
            view->scrollTo(row);
        }
    }
    QCoreApplication::processEvents();
    (void)window.grab();
}

const std::vector<QString>& hostileTexts()
{
    static const std::vector<QString> texts{
        {},
        QStringLiteral("a"),
        QString{10'000, QLatin1Char{'n'}},
        QStringLiteral("n/").repeated(300),
        QStringLiteral("../../evil.txt"),
        QStringLiteral("..\\..\\evil.txt"),
        QStringLiteral("/proc/evil.txt"),
        QStringLiteral("C:\\evil.txt"),
        QStringLiteral("a%2Fb%00c"),
        QStringLiteral("["),
        QStringLiteral("(?<"),
        QStringLiteral("(a+)+$"),
        QStringLiteral("*?[!"),
        QStringLiteral("<b>&amp;<img src='file:///etc/hostname'>"),
        QStringLiteral("مضخم العمليات ‏(عربي)‏"),
        QStringLiteral("מגבר \u202E מתהפך"),
        QStringLiteral("e") + QStringLiteral("\u0301").repeated(500),
        QStringLiteral("😀👩‍👩‍👧‍👦"),
        QString{QChar{0}},
        QString{QChar{0xD800}},
        QStringLiteral("\n\t\r\u2028"),
        QStringLiteral("  "),
        QStringLiteral("; ; ;"),
    };
    return texts;
}
