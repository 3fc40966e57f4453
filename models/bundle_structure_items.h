#pragma once

#include "models/tree_items.h"

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging {
class OpcPackage;
}

/// The items of `BundleStructureModel`: plain objects, owned by the branch above them.
namespace detail {

class BranchItem;

class AbstractBundleStructureModelItem
{
public:
    /// @param parent  null for the root
    AbstractBundleStructureModelItem(const QString& name, BranchItem* parent);
    AbstractBundleStructureModelItem(const AbstractBundleStructureModelItem&) = delete;
    AbstractBundleStructureModelItem& operator=(const AbstractBundleStructureModelItem&) = delete;

    virtual ~AbstractBundleStructureModelItem();

    /// Null when there is no child at that position.
    virtual AbstractBundleStructureModelItem* child(int index) const = 0;
    virtual bool isBranch() const = 0;
    virtual QString mimeTypeText() const = 0;
    virtual int childCount() const = 0;
    virtual QString sizeText() const = 0;
    virtual QString typeText() const = 0;

    /// 0 a part, 1 a folder, 2 the root; the model has no use for it.
    virtual int itemKind() const = 0;

    const QString& name() const noexcept { return m_name; }
    BranchItem* parent() const noexcept { return m_parent; }

private:
    QString m_name;
    BranchItem* m_parent;
};

/// An item that has no children.
class NodeItem : public AbstractBundleStructureModelItem
{
public:
    using AbstractBundleStructureModelItem::AbstractBundleStructureModelItem;
    ~NodeItem() override;

    AbstractBundleStructureModelItem* child(int index) const override;
    bool isBranch() const override;
    int childCount() const override;
};

/// An item with children: parts and folders in one sequence, as they were first met.
class BranchItem : public AbstractBundleStructureModelItem
{
public:
    using AbstractBundleStructureModelItem::AbstractBundleStructureModelItem;
    ~BranchItem() override;

    AbstractBundleStructureModelItem* child(int index) const override;
    bool isBranch() const override;
    int childCount() const override;

    /// "%1 items", whatever the number.
    QString sizeText() const override;

    /// The folder of exactly that name directly below, made when there is none.
    BranchItem* directory(const QString& name);

    /// Appends a part, also when one of that name is there.
    void addPart(const QString& name);

    /// -1 when `child` is not directly below.
    int positionOf(const AbstractBundleStructureModelItem* child) const;

private:
    std::vector<std::shared_ptr<AbstractBundleStructureModelItem>> m_children;
    TreeItems::DirectoriesByName<BranchItem> m_directories;
};

class PartNodeItem : public NodeItem
{
public:
    using NodeItem::NodeItem;
    ~PartNodeItem() override;

    QString mimeTypeText() const override;
    QString sizeText() const override;
    QString typeText() const override;
    int itemKind() const override;
};

class PartBranchItem : public BranchItem
{
public:
    using BranchItem::BranchItem;
    ~PartBranchItem() override;

    QString mimeTypeText() const override;
    QString typeText() const override;
    int itemKind() const override;
};

class RootBundleStructureModelItem : public BranchItem
{
public:
    RootBundleStructureModelItem();

    /// The tree of all parts of a package.
    /// @throws bad_expected_access<ErrorCode2>  the parts, the relationships, or the name of one of them cannot be read
    explicit RootBundleStructureModelItem(const Kelvaris::System::IO::OpcPackaging::OpcPackage& package);

    ~RootBundleStructureModelItem() override;

    QString mimeTypeText() const override;
    QString sizeText() const override;
    QString typeText() const override;
    int itemKind() const override;
};

} // namespace detail
