#include "browsers/prototype_examples_model.h"

#include "authoring/example_bundle_walk.h"

PrototypeExamplesModel::PrototypeExamplesModel(const Kelvaris::System::FilePath2& directory, QObject* parent)
    : QAbstractItemModel{parent}, m_entries{Authoring::findExampleBundles(directory)}
{
}

QModelIndex PrototypeExamplesModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, const_cast<PrototypeExamplesEntry*>(&m_entries[static_cast<std::size_t>(row)]));
}

QModelIndex PrototypeExamplesModel::parent(const QModelIndex&) const
{
    return {};
}

int PrototypeExamplesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int PrototypeExamplesModel::columnCount(const QModelIndex&) const
{
    return 3;
}

QVariant PrototypeExamplesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const auto& entry = *static_cast<const PrototypeExamplesEntry*>(index.internalPointer());
    switch (index.column()) {
    case 0:
        return entry.title;
    case 1:
        return entry.description;
    case 2:
        return role == Qt::DisplayRole ? QVariant{entry.keywords.join(QLatin1String{"; "})} : QVariant{entry.keywords};
    default:
        return {};
    }
}

QVariant PrototypeExamplesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case 0:
        return QStringLiteral("Title");
    case 1:
        return QStringLiteral("Description");
    case 2:
        return QStringLiteral("Keywords");
    default:
        return {};
    }
}
