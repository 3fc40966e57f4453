#include "models/examples_bundle_content_model.h"

#include "models/examples_bundle_items.h"

namespace Kelvaris::System::IO::Bundle {

ExamplesBundleContentModel::ExamplesBundleContentModel(QObject* parent)
    : QAbstractItemModel{parent}, m_root{std::make_unique<RootItem>()}
{
}

ExamplesBundleContentModel::~ExamplesBundleContentModel() = default;

QModelIndex ExamplesBundleContentModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, itemFromIndex(parent)->child(row));
}

QModelIndex ExamplesBundleContentModel::parent(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    ModelItem* const above = itemFromIndex(index)->parent();
    if (above == m_root.get())
        return {};
    return createIndex(above->parent()->rowOf(above), 0, above);
}

int ExamplesBundleContentModel::rowCount(const QModelIndex& parent) const
{
    return itemFromIndex(parent)->rowCount();
}

int ExamplesBundleContentModel::columnCount(const QModelIndex& parent) const
{
    return itemFromIndex(parent)->columnCount();
}

QVariant ExamplesBundleContentModel::data(const QModelIndex& index, int role) const
{
    return index.isValid() ? itemFromIndex(index)->data(index.column(), role) : QVariant{};
}

bool ExamplesBundleContentModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    // Without dataChanged: a caller that changes a value is the one that shows it.
    return itemFromIndex(index)->setData(index.column(), value, role);
}

void ExamplesBundleContentModel::setBundle(std::unique_ptr<BarrelOfExamplesBundle> barrel)
{
    beginResetModel();
    // Views hold on to the old items until the reset ends. After an exception it never does, and they stay.
    m_root->examples().replace(*barrel);
    barrel.reset();
    endResetModel();
    m_root->examples().forgetReplaced();
}

QModelIndex ExamplesBundleContentModel::examplesIndex() const
{
    return index(0, 0);
}

QModelIndex ExamplesBundleContentModel::examplesPropertiesIndex() const
{
    return index(1, 0);
}

QModelIndex ExamplesBundleContentModel::exampleContentIndex(int row) const
{
    return index(0, 0, index(row, 0, examplesIndex()));
}

QModelIndex ExamplesBundleContentModel::examplePropertiesIndex(int row) const
{
    return index(1, 0, index(row, 0, examplesIndex()));
}

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::itemFromIndex(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<ModelItem*>(index.internalPointer()) : m_root.get();
}

} // namespace Kelvaris::System::IO::Bundle
