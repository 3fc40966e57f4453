#include "editors/guarded_item_delegate.h"

#include "authoring/guarded.h"

namespace Kelvaris::System::IO::Bundle {

void GuardedItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    runGuarded([&] { QStyledItemDelegate::setModelData(editor, model, index); });
}

} // namespace Kelvaris::System::IO::Bundle
