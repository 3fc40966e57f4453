#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QString>
#include <QtGui/QIcon>

#include <vector>

namespace Kelvaris::System::IO::Bundle::detail {

/// The checklist of a bundle editor: sentences with a green square where they hold and a red one where they do not.
///
/// The owner decides what a requirement means and reports changes; it learns from the signal how many hold.
class RequirementList : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit RequirementList(QObject* parent = nullptr);
    ~RequirementList() override;

    /// The number of requirements, whatever the parent.
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Appends a requirement and emits `fulfillmentStatusChanged`.
    /// @param id  the owner's number for it; of several with one number only the first can be changed
    void addRequirement(int id, const QString& text, bool fulfilled);

    /// Reports a requirement's state, also an unchanged one: `dataChanged`, then `fulfillmentStatusChanged`.
    ///
    /// `dataChanged` has `Qt::DecorationRole` and an index counted from the end: the row whose number is the distance
    /// of the requirement from the end of the list, which is the invalid index for the first requirement. An unknown
    /// `id` changes and emits nothing.
    void setRequirementFulfilled(int id, bool fulfilled);

Q_SIGNALS:
    /// All requirements hold when the two numbers are equal.
    void fulfillmentStatusChanged(int fulfilled, int requirements);

private:
    struct Requirement
    {
        int id;
        QString text;
        bool fulfilled;
    };

    void reportStatus();

    std::vector<Requirement> m_requirements;
    QIcon m_fulfilledIcon;
    QIcon m_unfulfilledIcon;
};

} // namespace Kelvaris::System::IO::Bundle::detail
