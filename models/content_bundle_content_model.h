#pragma once

#include "kelvaris/system/io/bundle/content_bundle.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QString>

#include <memory>

namespace Kelvaris::System::IO::Bundle {

/// The content of a bundle as a tree of one column: the parts that its content relationships lead to, by the path of
/// each, parts ahead of directories. Roles: `models/item_roles.h`.
///
/// A directory can be added to the tree, and a file to the bundle; nothing is edited, moved or removed. A directory
/// lives in the tree alone until a file is added below it. Nothing is sorted.
///
/// Signals: a model reset in `setBundle`; those of an insertion in `addDirectory` and `addFile`, also where no row
/// comes of it.
class ContentBundleContentModel : public QAbstractItemModel
{
public:
    class Item;
    class PartItem;
    class DirectoryItem;
    class RootItem;

    explicit ContentBundleContentModel(QObject* parent = nullptr);
    ~ContentBundleContentModel() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Shows another bundle, or none for null. Content that cannot be read is missing from the tree. A bundle without
    /// content shows the empty directory "content", ready to receive files.
    void setBundle(std::shared_ptr<ContentBundle> bundle);

    const std::shared_ptr<ContentBundle>& bundle() const noexcept { return m_bundle; }

    /// The root for the invalid index. Owned by the model until the next `setBundle`.
    Item* itemFromIndex(const QModelIndex& index) const;

    /// Adds a directory below a directory; below a part nothing happens.
    ///
    /// An insertion at the end is announced also when a directory of that name is there, and no row comes of it.
    void addDirectory(const QString& name, const QModelIndex& parent);

    /// Adds a file of the disk to the bundle, as a content part at the path of a directory. Needs a bundle.
    ///
    /// The row behind the directory's parts appears even when the bundle refused the file: look at the result.
    /// @return  the new part; bundle 5 when `parent` is no directory, and nothing is announced then; core 2 when `file`
    ///          has no name, after an insertion was announced that never ends; otherwise as
    ///          `ContentBundle::createContentPartFromFile`
    Expected<OpcPackaging::OpcPackagePart, ErrorCode2> addFile(const FilePath2& file, const QModelIndex& parent);

protected:
    /// The bundle was replaced and its tree is in place; the model reset is still open.
    virtual void bundleChanged();

private:
    std::shared_ptr<ContentBundle> m_bundle;
    std::unique_ptr<RootItem> m_root;
};

} // namespace Kelvaris::System::IO::Bundle
