#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "models/content_bundle_content_model.h"
#include "models/tree_items.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

namespace Kelvaris::System::IO::Bundle {

class ContentBundleContentModel::Item
{
public:
    /// @param parent  null for the root
    Item(const QString& name, DirectoryItem* parent);
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    virtual ~Item();
    virtual QVariant data(int role) const;

    /// One of `ItemTypes`.
    virtual int itemType() const = 0;
    virtual int childCount() const = 0;

    const QString& name() const noexcept { return m_name; }
    DirectoryItem* parent() const noexcept { return m_parent; }

    /// Relative to the root of the bundle, without a separator at its beginning.
    FilePath2 path() const;

private:
    QString m_name;
    DirectoryItem* m_parent;
};

class ContentBundleContentModel::PartItem : public Item
{
public:
    using Item::Item;
    ~PartItem() override;

    int itemType() const override;
    int childCount() const override;
};

/// Shows all its parts ahead of all its directories, each in the order in which they came.
class ContentBundleContentModel::DirectoryItem : public Item
{
public:
    using Item::Item;
    ~DirectoryItem() override;

    int itemType() const override;
    int childCount() const override;

    int partCount() const noexcept;

    /// @param row  0 to `childCount() - 1`
    Item* child(int row) const;

    /// -1 when `child` is not directly below.
    int rowOf(const Item* child) const;

    /// The directory of exactly that name directly below, appended when there is none.
    DirectoryItem* directory(const QString& name);

    /// Appends a part, also when one of that name is there.
    void addPart(const QString& name);

private:
    std::vector<std::shared_ptr<PartItem>> m_parts;
    std::vector<std::shared_ptr<DirectoryItem>> m_directories;
    TreeItems::DirectoriesByName<DirectoryItem> m_directoriesByName;
};

class ContentBundleContentModel::RootItem : public DirectoryItem
{
public:
    /// The tree of a bundle's content; without rows for a null bundle. What cannot be read is missing from it.
    explicit RootItem(std::shared_ptr<ContentBundle> bundle);
    ~RootItem() override;

private:
    void addPart(const OpcPackaging::OpcPackageRelationship& relationship);

    std::shared_ptr<ContentBundle> m_bundle;
};

} // namespace Kelvaris::System::IO::Bundle
