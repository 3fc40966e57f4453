#pragma once

#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QString>

#include <memory>
#include <variant>

namespace Kelvaris::System::IO::OpcPackaging {

/// Any package as a tree of one column: "Parts", with every part by its path, parts ahead of directories, and
/// "Relationships", which never has rows. `ItemRoles::itemType` tells what a row is. Nothing is sorted.
///
/// Without a package there are two rows all the same, without text and without an item behind them. Such a row counts
/// as the top level, so that `rowCount` gives two rows below it, and so on without end; `hasChildren` is false for it,
/// so that views, which ask that first, do not go there. QTreeView's key "*" does not ask: a view over a model that has
/// no package takes `setItemsExpandable(false)`.
///
/// Directories can be added to the tree, and files to the package; nothing is edited, moved or removed. The model does
/// not watch the package. Signals: a model reset in `setPackage`; those of an insertion in `addDirectory` and
/// `addFile`, in the latter at another row than the new one or without any.
class OpcPackageModel : public QAbstractItemModel
{
public:
    class ModelItem;
    class Part;
    class PartDirectory;
    class RelationshipDirectory;

    explicit OpcPackageModel(QObject* parent);

    /// What `OpcPackage::open` gave; no package, without a message, for an error.
    OpcPackageModel(Expected<OpcPackage, ErrorCode2> package, QObject* parent);
    OpcPackageModel(OpcPackage package, QObject* parent);
    OpcPackageModel(std::shared_ptr<OpcPackage> package, QObject* parent);

    ~OpcPackageModel() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Shows another package, or an empty one for null. A part that cannot be read is missing from the tree.
    /// @param package  stays the caller's, and outlives the model or the next `setPackage`
    void setPackage(OpcPackage* package);
    void setPackage(std::shared_ptr<OpcPackage> package);

    OpcPackage* package() const noexcept;

    QModelIndex partsIndex() const;
    QModelIndex relationshipsIndex() const;

    /// Whether the row stands for a part or a directory of parts.
    bool isPartRow(const QModelIndex& index) const;

    /// Whether nothing directly below `directory` has that name, in whichever case.
    bool isNameFree(const PartDirectory& directory, const QString& name) const;

    /// Adds a directory to the tree, not to the package.
    /// @return  false, without a signal, when `parent` is no directory of parts or has an entry of that name
    bool addDirectory(const QString& name, const QModelIndex& parent);

    /// Adds a file of the disk to the package, as a part at the path of a directory with a relationship of the package
    /// to it.
    ///
    /// The row stands behind the directory's parts; the one announced is behind its directories. A file that the
    /// package refuses has no row, and neither the caller nor a view is told.
    /// @param parent     a row with an item
    /// @param partsRow   not used
    /// @return  opc 2 when `parent` is no directory, core 2 when `file` has no name: nothing is announced then. Success
    ///          in every other case.
    Expected<void, ErrorCode2> addFile(const FilePath2& file, const QModelIndex& parent, const MIMEType& mimeType,
                                       const QModelIndex& partsRow, const String2& relationshipType,
                                       OpcPackageCompressionType compression);

private:
    static ModelItem* itemFromIndex(const QModelIndex& index);

    void addParts();
    void addPart(const OpcPackagePart& part);
    Expected<OpcPackagePart, ErrorCode2> createPart(const FilePath2& file, const FilePath2& path,
                                                    const MIMEType& mimeType, const String2& relationshipType,
                                                    OpcPackageCompressionType compression);
    void insertPart(PartDirectory& directory, const QString& name, OpcPackagePartUri uri);

    std::variant<std::shared_ptr<OpcPackage>, OpcPackage*> m_package;
    std::shared_ptr<PartDirectory> m_parts;
    std::shared_ptr<RelationshipDirectory> m_relationships;
};

} // namespace Kelvaris::System::IO::OpcPackaging
