#pragma once

#include <QtCore/QHash>
#include <QtCore/QSize>
#include <QtGui/QFont>
#include <QtWidgets/QStyledItemDelegate>

#include <array>
#include <optional>

/// Paints a list's titles as views do by default, and measures them in a fraction of the time.
///
/// A list view measures all of its rows when it is shown, and again whenever a search brings rows back; with ten
/// thousand rows that takes a tenth of a second. But all it makes of their widths is the greatest, since it gives that
/// to each row. So a title that its letters show to be narrower than one above is not measured: it is told to be as
/// wide as it can be at most. The others are measured as by default, and once.
class TitleDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// @return  the default's height; the default's width, or one above it that is not above that of a row which was
    ///          measured since the first
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void useFont(const QFont& font) const;
    QSize measured(const QStyleOptionViewItem& option, const QModelIndex& index, const QString& title) const;
    int widthAtMost(const QString& title) const;
    qreal advanceOf(const QString& title) const;

    mutable std::optional<QFont> m_font;         // what all of this was measured with
    mutable std::array<qreal, 128> m_advances{}; // of the letters of ASCII, each alone; 0 for other characters
    mutable QHash<QString, QSize> m_sizes;
    mutable int m_height = 0; // of a title of such letters; 0 until one was measured
    mutable int m_margin = 0; // that the default puts around a title
    mutable int m_widest = 0; // since the first row
};
