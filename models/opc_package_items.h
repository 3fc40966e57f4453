#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"
#include "models/opc_package_model.h"
#include "models/tree_items.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging {

class OpcPackageModel::ModelItem
{
public:
    /// @param parent  null for the two top items
    ModelItem(const QString& name, ModelItem* parent);
    ModelItem(const ModelItem&) = delete;
    ModelItem& operator=(const ModelItem&) = delete;

    virtual ~ModelItem();

    /// Null when there is no child in that row.
    virtual ModelItem* child(int row) const = 0;
    virtual QVariant data(int column, int role) const;
    virtual int rowOf(const ModelItem* child) const = 0;
    virtual int rowCount() const = 0;

    /// One of `ItemTypes`.
    virtual int itemType() const = 0;

    const QString& name() const noexcept { return m_name; }
    ModelItem* parent() const noexcept { return m_parent; }

    /// Relative to the root of the package; the top items add nothing to it.
    FilePath2 path() const;

private:
    ModelItem* m_parent;
    QString m_name;
};

class OpcPackageModel::Part : public ModelItem
{
public:
    Part(const QString& name, ModelItem* parent, OpcPackagePartUri uri);
    ~Part() override;

    ModelItem* child(int row) const override;
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;
    int itemType() const override;

    const OpcPackagePartUri& uri() const noexcept { return m_uri; }

private:
    OpcPackagePartUri m_uri;
};

/// Shows all its parts ahead of all its directories, each in the order in which they came.
class OpcPackageModel::PartDirectory : public ModelItem
{
public:
    using ModelItem::ModelItem;
    ~PartDirectory() override;

    ModelItem* child(int row) const override;

    /// -1 when `child` is not directly below.
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;
    int itemType() const override;

    int partCount() const noexcept;
    const std::vector<std::shared_ptr<Part>>& parts() const noexcept { return m_parts; }
    const std::vector<std::shared_ptr<PartDirectory>>& directories() const noexcept { return m_directories; }

    /// The directory of exactly that name directly below, appended when there is none.
    PartDirectory* directory(const QString& name);

    /// Appends a part, also when one of that name is there.
    void addPart(const QString& name, OpcPackagePartUri uri);

private:
    std::vector<std::shared_ptr<Part>> m_parts;
    std::vector<std::shared_ptr<PartDirectory>> m_directories;
    TreeItems::DirectoriesByName<PartDirectory> m_directoriesByName;
};

/// A place-holder: the relationships of a package have no rows.
class OpcPackageModel::RelationshipDirectory : public ModelItem
{
public:
    using ModelItem::ModelItem;
    ~RelationshipDirectory() override;

    ModelItem* child(int row) const override;
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;
    int itemType() const override;
};

} // namespace Kelvaris::System::IO::OpcPackaging
