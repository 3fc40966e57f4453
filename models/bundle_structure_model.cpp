#include "models/bundle_structure_model.h"

#include "models/bundle_structure_items.h"

using detail::AbstractBundleStructureModelItem;
using detail::BranchItem;
using detail::RootBundleStructureModelItem;

BundleStructureModel::BundleStructureModel(const Kelvaris::System::IO::Bundle::AbstractBundle& bundle, QObject* parent)
    : BundleStructureModel{bundle.package(), parent}
{
}

BundleStructureModel::BundleStructureModel(const Kelvaris::System::IO::OpcPackaging::OpcPackage& package,
                                           QObject* parent)
    : QAbstractItemModel{parent}, m_root{std::make_unique<RootBundleStructureModelItem>(package)}
{
}

BundleStructureModel::BundleStructureModel(QObject* parent)
    : QAbstractItemModel{parent}, m_root{std::make_unique<RootBundleStructureModelItem>()}
{
}

BundleStructureModel::~BundleStructureModel() = default;

QModelIndex BundleStructureModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, itemFromIndex(parent)->child(row));
}

QModelIndex BundleStructureModel::parent(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    BranchItem* const branch = itemFromIndex(index)->parent();
    if (branch == nullptr || branch == m_root.get())
        return {};
    AbstractBundleStructureModelItem* const item = branch;
    return createIndex(branch->parent()->positionOf(branch), 0, item);
}

int BundleStructureModel::rowCount(const QModelIndex& parent) const
{
    return itemFromIndex(parent)->childCount();
}

int BundleStructureModel::columnCount(const QModelIndex&) const
{
    return 4;
}

QVariant BundleStructureModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    const AbstractBundleStructureModelItem* const item = itemFromIndex(index);
    switch (index.column()) {
    case 0:
        return item->name();
    case 1:
        return item->sizeText();
    case 2:
        return item->typeText();
    case 3:
        return item->mimeTypeText();
    default:
        return {};
    }
}

QVariant BundleStructureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case 0:
        return QStringLiteral("Name");
    case 1:
        return QStringLiteral("Size");
    case 2:
        return QStringLiteral("Type");
    case 3:
        return QStringLiteral("MIME Type");
    default:
        return {};
    }
}

AbstractBundleStructureModelItem* BundleStructureModel::itemFromIndex(const QModelIndex& index) const
{
    if (!index.isValid())
        return m_root.get();
    return static_cast<AbstractBundleStructureModelItem*>(index.internalPointer());
}
