#pragma once

#include "kelvaris/system/io/bundle/abstract_bundle.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QString>

#include <memory>
#include <vector>

namespace Kelvaris::System::IO::Bundle {

/// The core properties of one bundle as a flat table: the name in column 0, the value as text in column 1.
///
/// Every cell of column 1 is editable. An accepted edit goes into the bundle in memory at once; the model does not
/// watch the bundle, so that a change made elsewhere shows after `setBundle` or `updateProperties`.
///
/// Signals: a model reset in `setBundle`; `dataChanged` for each row that `updateProperties` reads, also inside the
/// reset; `dataChanged` for the cell after `setData`. There are no header texts, and rows are neither moved nor
/// removed.
class BundlePropertiesModel : public QAbstractItemModel
{
public:
    /// The rows with empty values; nothing is read before `setBundle`.
    explicit BundlePropertiesModel(QObject* parent = nullptr);
    ~BundlePropertiesModel() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;

    /// Invalid for every index.
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;

    int rowCount(const QModelIndex& parent = {}) const override;

    /// 2 whatever the parent.
    int columnCount(const QModelIndex& parent = {}) const override;

    /// `Qt::DisplayRole` and `Qt::EditRole` give text; every other role nothing.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Takes `value`'s text into the row's value and sets the property to it. Needs a bundle.
    ///
    /// The column does not matter: column 0 changes the value too. What the bundle itself refuses goes unnoticed.
    /// @return  false for an invalid index or another role than `Qt::EditRole`
    /// @throws bad_expected_access<ErrorCode2>  the text is no value of that property (a date, invalid Unicode): the
    ///          property stays as it was and nothing is emitted, but the cell shows the text
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// The bundle that is shown, null before the first `setBundle`.
    virtual AbstractBundle* bundle() const;

    /// Reads every value anew. A property that is absent or cannot be read shows as an empty one. Needs a bundle.
    /// A subclass with more rows reads those and then calls this version.
    /// @throws bad_expected_access<ErrorCode2>  a value has no text
    virtual void updateProperties();

    /// Shows another bundle.
    /// @param bundle  not null
    /// @throws bad_expected_access<ErrorCode2>  as `updateProperties`; the model reset stays open then
    void setBundle(std::shared_ptr<AbstractBundle> bundle);

protected:
    /// Appends a row. `key` is the number by which `setRowValue` finds it, and should be the row's own.
    void addRow(const QString& name, const QString& value, int key);

    /// Stores `value` in the first row of that key, if there is one, and emits `dataChanged` for row `key`, column 0.
    void setRowValue(int key, const QString& value);

private:
    struct PropertyRow
    {
        QString name;
        QString value;
        int key;
    };

    std::shared_ptr<AbstractBundle> m_bundle;
    std::vector<PropertyRow> m_rows;
};

} // namespace Kelvaris::System::IO::Bundle
