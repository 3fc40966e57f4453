#pragma once

#include "kelvaris/system/io/opc_packaging/opc_package_part.h"
#include "models/examples_bundle_content_model.h"
#include "models/tree_items.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

namespace Kelvaris::System::IO::Bundle {

/// An item of the tree; by itself one without children and without text.
class ExamplesBundleContentModel::ModelItem
{
public:
    /// @param parent  null for the root
    explicit ModelItem(ModelItem* parent) noexcept : m_parent{parent} {}
    ModelItem(const ModelItem&) = delete;
    ModelItem& operator=(const ModelItem&) = delete;

    virtual ~ModelItem();

    /// @param row  0 to `rowCount() - 1`
    virtual ModelItem* child(int row);
    virtual int columnCount() const;
    virtual QVariant data(int column, int role) const;

    /// -1 when `child` is not directly below.
    virtual int rowOf(const ModelItem* child) const;
    virtual ModelItem* parent() const;
    virtual int rowCount() const;
    virtual bool setData(int column, const QVariant& value, int role);

protected:
    ModelItem(ModelItem&&) noexcept = default;

private:
    ModelItem* m_parent;
};

/// A file or a directory of an example.
class ExamplesBundleContentModel::PathItem : public ModelItem
{
public:
    PathItem(const QString& name, ModelItem* parent);
    ~PathItem() override;

    /// The name, in any column.
    QVariant data(int column, int role) const override;

    virtual bool isFile() const = 0;
    virtual bool isDirectory() const = 0;

    const QString& name() const noexcept { return m_name; }

private:
    QString m_name;
};

class ExamplesBundleContentModel::FileItem : public PathItem
{
public:
    using PathItem::PathItem;
    ~FileItem() override;

    bool isFile() const override;
    bool isDirectory() const override;
};

/// Shows files and directories in one sequence, as they were first met.
class ExamplesBundleContentModel::DirectoryItem : public PathItem
{
public:
    using PathItem::PathItem;
    ~DirectoryItem() override;

    ModelItem* child(int row) override;
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;
    bool isFile() const override;
    bool isDirectory() const override;

    /// The directory of that name, in whichever case, made when there is none.
    virtual DirectoryItem* directory(const QString& name);

    /// Appends a file, also when one of that name is there.
    void addFile(const QString& name);

private:
    std::vector<std::shared_ptr<PathItem>> m_children;
    TreeItems::DirectoriesByName<DirectoryItem, TreeItems::NameInAnyCase> m_directories;
};

/// The top of an example's files. The folder "content" is no row: what lies in it stands directly below.
class ExamplesBundleContentModel::RootDirectoryItem : public DirectoryItem
{
public:
    using DirectoryItem::DirectoryItem;
    ~RootDirectoryItem() override;

    /// This item itself for "content", in whichever case.
    DirectoryItem* directory(const QString& name) override;

    /// @throws bad_expected_access<ErrorCode2>  the part has no local path
    void addPart(const OpcPackaging::OpcPackagePart& part);
};

} // namespace Kelvaris::System::IO::Bundle
