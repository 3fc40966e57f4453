#include "models/content_bundle_items.h"

#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/try_invoke.h"
#include "models/item_roles.h"
#include "models/part_path.h"

#include <cstddef>
#include <utility>

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackagePart;
using OpcPackaging::OpcPackageRelationship;

ContentBundleContentModel::Item::Item(const QString& name, DirectoryItem* parent) : m_name{name}, m_parent{parent} {}

ContentBundleContentModel::Item::~Item() = default;

QVariant ContentBundleContentModel::Item::data(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return m_name;
    case ItemRoles::itemType:
        return itemType();
    case ItemRoles::path:
        return toQString(path());
    default:
        return {};
    }
}

FilePath2 ContentBundleContentModel::Item::path() const
{
    FilePath2 path;
    for (const Item* const item : TreeItems::lineOf(this))
        path /= toFilePath2(item->name());
    return path;
}

ContentBundleContentModel::PartItem::~PartItem() = default;

int ContentBundleContentModel::PartItem::itemType() const
{
    return ItemTypes::part;
}

int ContentBundleContentModel::PartItem::childCount() const
{
    return 0;
}

ContentBundleContentModel::DirectoryItem::~DirectoryItem()
{
    TreeItems::release(std::move(m_directories),
                       [](DirectoryItem& directory) { return std::exchange(directory.m_directories, {}); });
}

int ContentBundleContentModel::DirectoryItem::itemType() const
{
    return ItemTypes::directory;
}

int ContentBundleContentModel::DirectoryItem::childCount() const
{
    return partCount() + static_cast<int>(m_directories.size());
}

int ContentBundleContentModel::DirectoryItem::partCount() const noexcept
{
    return static_cast<int>(m_parts.size());
}

ContentBundleContentModel::Item* ContentBundleContentModel::DirectoryItem::child(int row) const
{
    if (row < partCount())
        return m_parts[static_cast<std::size_t>(row)].get();
    return m_directories[static_cast<std::size_t>(row - partCount())].get();
}

int ContentBundleContentModel::DirectoryItem::rowOf(const Item* child) const
{
    if (child->itemType() == ItemTypes::part)
        return TreeItems::positionOf(m_parts, child);
    const int position = TreeItems::positionOf(m_directories, child);
    return position < 0 ? position : partCount() + position;
}

ContentBundleContentModel::DirectoryItem* ContentBundleContentModel::DirectoryItem::directory(const QString& name)
{
    return TreeItems::findOrMake(m_directoriesByName, name, [&] {
        m_directories.push_back(std::make_shared<DirectoryItem>(name, this));
        return m_directories.back().get();
    });
}

void ContentBundleContentModel::DirectoryItem::addPart(const QString& name)
{
    m_parts.push_back(std::make_shared<PartItem>(name, this));
}

ContentBundleContentModel::RootItem::RootItem(std::shared_ptr<ContentBundle> bundle)
    : DirectoryItem{{}, nullptr}, m_bundle{std::move(bundle)}
{
    if (m_bundle == nullptr)
        return;
    const auto relationships = m_bundle->contentRelationships();
    if (!relationships)
        return;
    auto it = relationships->begin();
    if (it == decltype(it)::Sentinel{})
        TreeItems::directoryBelow<DirectoryItem>(this, L"content");
    for (; it != decltype(it)::Sentinel{}; ++it)
        addPart(*it);
}

ContentBundleContentModel::RootItem::~RootItem() = default;

void ContentBundleContentModel::RootItem::addPart(const OpcPackageRelationship& relationship)
{
    const auto place = [this](const FilePath2& path) {
        const auto parent = PathElements::parentPath(path.c_str());
        TreeItems::directoryBelow<DirectoryItem>(this, parent)->addPart(toQString(path.filename().value()));
    };
    // One part that cannot be placed must not hide the others: it is missing from the tree, and nobody is told.
    (void)m_bundle->package()
        .partFromRelationship(relationship)
        .andThen([](const OpcPackagePart& part) { return localPath(part); })
        .andThen([&](const FilePath2& path) { return tryInvoke([&] { place(path); }); });
}

} // namespace Kelvaris::System::IO::Bundle
