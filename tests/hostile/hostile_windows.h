#pragma once

#include <QtCore/QModelIndex>
#include <QtCore/QString>

#include <string>
#include <vector>

class QAbstractItemView;
class QWidget;

/// The script functions that open a window on one file.
const std::vector<std::string>& openingFunctions();

/// The windows that are visible now, dialogs among them.
std::vector<QWidget*> visibleWindows();

/// Closes all windows and lets them go.
void closeAllWindows();

/// Looks at everything that a window shows: opens its trees, makes each row current, lets it paint.
void lookAtEverything(QWidget& window);

/// The rows that a view shows at all depths, the first ones of a long list.
std::vector<QModelIndex> rowsOf(const QAbstractItemView& view);

/// Texts that a user types by mistake, and those that nobody would.
const std::vector<QString>& hostileTexts();
