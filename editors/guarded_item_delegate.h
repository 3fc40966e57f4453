#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace Kelvaris::System::IO::Bundle {

/// Commits an edit to a model that may throw. What the model throws is logged under "ui" and ends there: a user who
/// types "tomorrow" into a date must not end the host.
class GuardedItemDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};

} // namespace Kelvaris::System::IO::Bundle
