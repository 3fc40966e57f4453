#include "models/bundle_properties_model.h"

#include "models/core_properties.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Kelvaris::System::IO::Bundle {

BundlePropertiesModel::BundlePropertiesModel(QObject* parent) : QAbstractItemModel{parent}
{
    for (int key = 0; key < CoreProperties::count; ++key)
        m_rows.push_back({CoreProperties::name(key), {}, key});
}

BundlePropertiesModel::~BundlePropertiesModel() = default;

QModelIndex BundlePropertiesModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex{};
}

QModelIndex BundlePropertiesModel::parent(const QModelIndex&) const
{
    return {};
}

int BundlePropertiesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int BundlePropertiesModel::columnCount(const QModelIndex&) const
{
    return 2;
}

QVariant BundlePropertiesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const PropertyRow& row = m_rows[static_cast<std::size_t>(index.row())];
    return index.column() == 0 ? row.name : row.value;
}

bool BundlePropertiesModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    // Ahead of any conversion: a text that is refused stays in the cell, so that the user can mend it there.
    const QString& text = m_rows[static_cast<std::size_t>(index.row())].value = value.toString();
    if (index.row() < CoreProperties::count)
        CoreProperties::write(m_bundle->package().packageProperties(), index.row(), text);
    Q_EMIT dataChanged(index, index, {Qt::EditRole});
    return true;
}

Qt::ItemFlags BundlePropertiesModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    return index.isValid() && index.column() == 1 ? flags | Qt::ItemIsEditable : flags;
}

AbstractBundle* BundlePropertiesModel::bundle() const
{
    return m_bundle.get();
}

void BundlePropertiesModel::updateProperties()
{
    for (int key = 0; key < CoreProperties::count; ++key)
        setRowValue(key, CoreProperties::read(m_bundle->package().packageProperties(), key));
}

void BundlePropertiesModel::setBundle(std::shared_ptr<AbstractBundle> bundle)
{
    beginResetModel();
    m_bundle = std::move(bundle);
    updateProperties();
    endResetModel();
}

void BundlePropertiesModel::addRow(const QString& name, const QString& value, int key)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_rows.push_back({name, value, key});
    endInsertRows();
}

void BundlePropertiesModel::setRowValue(int key, const QString& value)
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [key](const auto& each) { return each.key == key; });
    if (row == m_rows.end())
        return;
    row->value = value;
    // The key and column 0, although the text stands in column 1 of the row that was found: listeners know a property
    // by this index.
    const QModelIndex changed = index(key, 0);
    Q_EMIT dataChanged(changed, changed, {Qt::DisplayRole});
}

} // namespace Kelvaris::System::IO::Bundle
