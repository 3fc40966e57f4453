#pragma once

#include <QtCore/QHash>
#include <QtCore/QSize>
#include <QtGui/QFont>
#include <QtWidgets/QStyledItemDelegate>

/// Paints and measures a list's titles as views do by default, and measures each title once.
///
/// A list view measures all of its rows anew whenever a search brings rows back. With ten thousand rows that takes a
/// tenth of a second, at each key.
class TitleDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    mutable QFont m_font; // what the sizes were measured with
    mutable QHash<QString, QSize> m_sizes;
};
