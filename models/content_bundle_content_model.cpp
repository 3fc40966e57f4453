#include "models/content_bundle_content_model.h"

#include "kelvaris/system/file_system.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/string.h"
#include "kelvaris/system/try_invoke.h"
#include "models/content_bundle_items.h"
#include "models/item_roles.h"

#include <string>
#include <utility>

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackageCompressionType;
using OpcPackaging::OpcPackagePart;
using OpcPackaging::OpcPackagePartUri;

namespace {

/// Null unless `item` is a directory.
template <class Directory, class Item>
Directory* asDirectory(Item* item)
{
    return item->itemType() == ItemTypes::directory ? static_cast<Directory*>(item) : nullptr;
}

MIMEType mediaTypeOf(const FilePath2& file)
{
    // By way of UTF-8: the standard library's own way from wide paths depends on the locale.
    const String path{std::wstring{file.c_str()}};
    return MIMEType{FileSystem::type(FilePath{path.toStdStringView()})};
}

} // namespace

ContentBundleContentModel::ContentBundleContentModel(QObject* parent) : QAbstractItemModel{parent}
{
    setBundle(nullptr);
}

ContentBundleContentModel::~ContentBundleContentModel() = default;

QModelIndex ContentBundleContentModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, static_cast<DirectoryItem*>(itemFromIndex(parent))->child(row));
}

QModelIndex ContentBundleContentModel::parent(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    Item* const directory = itemFromIndex(index)->parent();
    if (directory == m_root.get())
        return {};
    return createIndex(directory->parent()->rowOf(directory), 0, directory);
}

int ContentBundleContentModel::rowCount(const QModelIndex& parent) const
{
    return itemFromIndex(parent)->childCount();
}

int ContentBundleContentModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ContentBundleContentModel::data(const QModelIndex& index, int role) const
{
    return index.isValid() ? itemFromIndex(index)->data(role) : QVariant{};
}

void ContentBundleContentModel::setBundle(std::shared_ptr<ContentBundle> bundle)
{
    beginResetModel();
    m_bundle = std::move(bundle);
    m_root = std::make_unique<RootItem>(m_bundle);
    bundleChanged();
    endResetModel();
}

ContentBundleContentModel::Item* ContentBundleContentModel::itemFromIndex(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Item*>(index.internalPointer()) : m_root.get();
}

void ContentBundleContentModel::addDirectory(const QString& name, const QModelIndex& parent)
{
    auto* const directory = asDirectory<DirectoryItem>(itemFromIndex(parent));
    if (directory == nullptr)
        return;
    // Announced also when the directory exists and no row is added: whoever asked for it hears of an insertion in any
    // case. The row announced is one past the last, which moves no index that anybody holds.
    const int row = directory->childCount();
    beginInsertRows(parent, row, row);
    directory->directory(name);
    endInsertRows();
}

Expected<OpcPackagePart, ErrorCode2> ContentBundleContentModel::addFile(const FilePath2& file,
                                                                        const QModelIndex& parent)
{
    return tryInvoke([&] {
        auto* const directory = asDirectory<DirectoryItem>(itemFromIndex(parent));
        if (directory == nullptr)
            throw SystemError{BundleError::notADirectory};
        const int row = directory->partCount();
        beginInsertRows(parent, row, row);
        // What throws from here on leaves the insertion open: there is no row to end it with. Views stand that, as they
        // act when an insertion ends.
        const MIMEType type = mediaTypeOf(file);
        const FilePath2 name = file.filename().value();
        const OpcPackagePartUri uri{directory->path() /= name};
        auto part = m_bundle->createContentPartFromFile(file, uri, type, OpcPackageCompressionType::normal);
        // The row appears also when the bundle refused the file: the caller has the result, and tells what became of
        // it.
        directory->addPart(toQString(name));
        endInsertRows();
        return part;
    });
}

void ContentBundleContentModel::bundleChanged() {}

} // namespace Kelvaris::System::IO::Bundle
