#pragma once

#include "kelvaris/system/io/bundle/abstract_bundle.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include <QtCore/QAbstractItemModel>

#include <memory>

namespace detail {
class AbstractBundleStructureModelItem;
class RootBundleStructureModelItem;
} // namespace detail

/// A snapshot of all parts of a package as a tree: folders are the segments of the parts' names, percent-encoded as
/// they stand in the package; parts and folders stand in the order in which the package names them.
///
/// The columns are name, size, type and media type; only folders have a size ("3 items") and a type. The tree is built
/// by the constructor and never changes, so that no signal is ever emitted and the package may go afterwards.
/// Read-only.
class BundleStructureModel : public QAbstractItemModel
{
public:
    /// The constructors that read a package throw bad_expected_access<ErrorCode2> when its parts or relationships, or
    /// the name of one of them, cannot be read.
    BundleStructureModel(const Kelvaris::System::IO::Bundle::AbstractBundle& bundle, QObject* parent);
    BundleStructureModel(const Kelvaris::System::IO::OpcPackaging::OpcPackage& package, QObject* parent);

    /// A tree without rows.
    explicit BundleStructureModel(QObject* parent);

    ~BundleStructureModel() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;

    /// The children of the parent's item, in whichever column `parent` stands.
    int rowCount(const QModelIndex& parent = {}) const override;

    /// Always 4.
    int columnCount(const QModelIndex& parent = {}) const override;

    /// Text for `Qt::DisplayRole`; nothing for any other role.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    detail::AbstractBundleStructureModelItem* itemFromIndex(const QModelIndex& index) const;

    std::unique_ptr<detail::RootBundleStructureModelItem> m_root;
};
