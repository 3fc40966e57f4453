#include "browsers/title_delegate.h"

#include <QtGui/QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace {

/// Letters that stand beside each other may be moved together or apart; no font moves all of a title by as much.
constexpr qreal kerning = 1.1;

bool isPlain(QChar character)
{
    return character.unicode() >= 0x20 && character.unicode() < 0x7f;
}

} // namespace

QSize TitleDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (option.font != m_font)
        useFont(option.font);
    // a view that measures all of its rows begins with the first
    if (index.row() == 0)
        m_widest = 0;
    const QString title = index.data(Qt::DisplayRole).toString();
    const int most = widthAtMost(title);
    if (most > 0 && most <= m_widest)
        return {most, m_height};
    const QSize size = measured(option, index, title);
    m_widest = std::max(m_widest, size.width());
    return size;
}

void TitleDelegate::useFont(const QFont& font) const
{
    m_font = font;
    const QFontMetricsF metrics{font};
    for (std::size_t code = 0; code < m_advances.size(); ++code) {
        const QChar character{static_cast<char16_t>(code)};
        m_advances[code] = isPlain(character) ? metrics.horizontalAdvance(character) : 0;
    }
    m_sizes.clear();
    m_height = 0;
    m_margin = 0;
    m_widest = 0;
}

QSize TitleDelegate::measured(const QStyleOptionViewItem& option, const QModelIndex& index, const QString& title) const
{
    const auto known = m_sizes.constFind(title);
    if (known != m_sizes.constEnd())
        return *known;
    const QSize size = *m_sizes.insert(title, QStyledItemDelegate::sizeHint(option, index));
    if (const qreal advance = advanceOf(title); advance > 0) {
        m_height = size.height();
        m_margin = std::max(m_margin, size.width() - static_cast<int>(advance));
    }
    return size;
}

/// @return  0 when that cannot be said
int TitleDelegate::widthAtMost(const QString& title) const
{
    const qreal advance = m_height > 0 ? advanceOf(title) : 0;
    return advance > 0 ? static_cast<int>(std::ceil(advance * kerning)) + m_margin : 0;
}

/// What the letters take, each alone; 0 for no letters, and when one of them is not of ASCII.
qreal TitleDelegate::advanceOf(const QString& title) const
{
    if (!std::all_of(title.begin(), title.end(), isPlain))
        return 0;
    qreal advance = 0;
    for (const QChar character : title)
        advance += m_advances[character.unicode()];
    return advance;
}
