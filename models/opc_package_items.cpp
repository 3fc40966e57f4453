#include "models/opc_package_items.h"

#include "kelvaris/system/qt/text_bridge.h"
#include "models/item_roles.h"

#include <cstddef>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging {

OpcPackageModel::ModelItem::ModelItem(const QString& name, ModelItem* parent) : m_parent{parent}, m_name{name} {}

OpcPackageModel::ModelItem::~ModelItem() = default;

QVariant OpcPackageModel::ModelItem::data(int column, int role) const
{
    if (column != 0)
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return m_name;
    return role == ItemRoles::itemType ? QVariant{itemType()} : QVariant{};
}

FilePath2 OpcPackageModel::ModelItem::path() const
{
    FilePath2 path;
    for (const ModelItem* const item : TreeItems::lineOf(this)) {
        if (item->parent() != nullptr)
            path /= FilePath2{qStringToUTF8(item->name()).valueOr({})};
    }
    return path;
}

OpcPackageModel::Part::Part(const QString& name, ModelItem* parent, OpcPackagePartUri uri)
    : ModelItem{name, parent}, m_uri{std::move(uri)}
{
}

OpcPackageModel::Part::~Part() = default;

OpcPackageModel::ModelItem* OpcPackageModel::Part::child(int) const
{
    return nullptr;
}

int OpcPackageModel::Part::rowOf(const ModelItem*) const
{
    return -1;
}

int OpcPackageModel::Part::rowCount() const
{
    return 0;
}

int OpcPackageModel::Part::itemType() const
{
    return ItemTypes::part;
}

OpcPackageModel::PartDirectory::~PartDirectory()
{
    TreeItems::release(std::move(m_directories),
                       [](PartDirectory& directory) { return std::exchange(directory.m_directories, {}); });
}

OpcPackageModel::ModelItem* OpcPackageModel::PartDirectory::child(int row) const
{
    if (row < 0 || row >= rowCount())
        return nullptr;
    if (row < partCount())
        return m_parts[static_cast<std::size_t>(row)].get();
    return m_directories[static_cast<std::size_t>(row - partCount())].get();
}

int OpcPackageModel::PartDirectory::rowOf(const ModelItem* child) const
{
    const int part = TreeItems::positionOf(m_parts, child);
    if (part >= 0)
        return part;
    const int directory = TreeItems::positionOf(m_directories, child);
    return directory < 0 ? directory : partCount() + directory;
}

int OpcPackageModel::PartDirectory::rowCount() const
{
    return partCount() + static_cast<int>(m_directories.size());
}

int OpcPackageModel::PartDirectory::itemType() const
{
    return ItemTypes::directory;
}

int OpcPackageModel::PartDirectory::partCount() const noexcept
{
    return static_cast<int>(m_parts.size());
}

OpcPackageModel::PartDirectory* OpcPackageModel::PartDirectory::directory(const QString& name)
{
    return TreeItems::findOrMake(m_directoriesByName, name, [&] {
        m_directories.push_back(std::make_shared<PartDirectory>(name, this));
        return m_directories.back().get();
    });
}

void OpcPackageModel::PartDirectory::addPart(const QString& name, OpcPackagePartUri uri)
{
    m_parts.push_back(std::make_shared<Part>(name, this, std::move(uri)));
}

OpcPackageModel::RelationshipDirectory::~RelationshipDirectory() = default;

OpcPackageModel::ModelItem* OpcPackageModel::RelationshipDirectory::child(int) const
{
    return nullptr;
}

int OpcPackageModel::RelationshipDirectory::rowOf(const ModelItem*) const
{
    return 0;
}

int OpcPackageModel::RelationshipDirectory::rowCount() const
{
    return 0;
}

int OpcPackageModel::RelationshipDirectory::itemType() const
{
    return ItemTypes::relationshipDirectory;
}

} // namespace Kelvaris::System::IO::OpcPackaging
