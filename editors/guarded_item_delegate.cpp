#include "editors/guarded_item_delegate.h"

#include "authoring/guarded.h"

#include <QtCore/QMetaProperty>

namespace Kelvaris::System::IO::Bundle {

void GuardedItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    // Not through the base class: what the model throws would pass through Qt, which does not unwind and would leak the
    // value.
    const QVariant value = editor->metaObject()->userProperty().read(editor);
    runGuarded([&] { model->setData(index, value, Qt::EditRole); });
}

} // namespace Kelvaris::System::IO::Bundle
