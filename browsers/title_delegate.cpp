#include "browsers/title_delegate.h"

QSize TitleDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (option.font != m_font) {
        m_font = option.font;
        m_sizes.clear();
    }
    const QString title = index.data(Qt::DisplayRole).toString();
    const auto known = m_sizes.constFind(title);
    if (known != m_sizes.constEnd())
        return *known;
    return *m_sizes.insert(title, QStyledItemDelegate::sizeHint(option, index));
}
