#include "models/opc_package_model.h"

#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/try_invoke.h"
#include "models/item_roles.h"
#include "models/opc_package_items.h"
#include "models/part_path.h"

#include <algorithm>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging {

OpcPackageModel::OpcPackageModel(QObject* parent) : QAbstractItemModel{parent} {}

OpcPackageModel::OpcPackageModel(Expected<OpcPackage, ErrorCode2> package, QObject* parent) : OpcPackageModel{parent}
{
    if (package)
        setPackage(std::make_shared<OpcPackage>(*std::move(package)));
}

OpcPackageModel::OpcPackageModel(OpcPackage package, QObject* parent)
    : OpcPackageModel{std::make_shared<OpcPackage>(std::move(package)), parent}
{
}

OpcPackageModel::OpcPackageModel(std::shared_ptr<OpcPackage> package, QObject* parent) : OpcPackageModel{parent}
{
    setPackage(std::move(package));
}

OpcPackageModel::~OpcPackageModel() = default;

QModelIndex OpcPackageModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    if (const ModelItem* const item = itemFromIndex(parent))
        return createIndex(row, column, item->child(row));
    ModelItem* const relationships = m_relationships.get();
    return createIndex(row, column, row == 0 ? m_parts.get() : relationships);
}

QModelIndex OpcPackageModel::parent(const QModelIndex& index) const
{
    const ModelItem* const item = itemFromIndex(index);
    ModelItem* const directory = item == nullptr ? nullptr : item->parent();
    if (directory == nullptr)
        return {};
    if (directory == m_parts.get())
        return partsIndex();
    const ModelItem* const above = directory->parent();
    return above == nullptr ? QModelIndex{} : createIndex(above->rowOf(directory), 0, directory);
}

int OpcPackageModel::rowCount(const QModelIndex& parent) const
{
    const ModelItem* const item = itemFromIndex(parent);
    return item == nullptr ? 2 : item->rowCount();
}

int OpcPackageModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool OpcPackageModel::hasChildren(const QModelIndex& parent) const
{
    // A row without an item has itself for its first child: same row, same column, same null pointer. A view that
    // opens one lays it out within itself until the stack is full.
    if (parent.isValid() && itemFromIndex(parent) == nullptr)
        return false;
    return QAbstractItemModel::hasChildren(parent);
}

QVariant OpcPackageModel::data(const QModelIndex& index, int role) const
{
    const ModelItem* const item = itemFromIndex(index);
    return item == nullptr ? QVariant{} : item->data(index.column(), role);
}

void OpcPackageModel::setPackage(OpcPackage* package)
{
    beginResetModel();
    m_package = package;
    m_parts = std::make_shared<PartDirectory>(QStringLiteral("Parts"), nullptr);
    m_relationships = std::make_shared<RelationshipDirectory>(QStringLiteral("Relationships"), nullptr);
    addParts();
    endResetModel();
}

void OpcPackageModel::setPackage(std::shared_ptr<OpcPackage> package)
{
    setPackage(package.get());
    m_package = std::move(package);
}

OpcPackage* OpcPackageModel::package() const noexcept
{
    if (const auto* const shared = std::get_if<std::shared_ptr<OpcPackage>>(&m_package))
        return shared->get();
    return *std::get_if<OpcPackage*>(&m_package);
}

QModelIndex OpcPackageModel::partsIndex() const
{
    return index(0, 0);
}

QModelIndex OpcPackageModel::relationshipsIndex() const
{
    return index(1, 0);
}

bool OpcPackageModel::isPartRow(const QModelIndex& index) const
{
    const ModelItem* const item = itemFromIndex(index);
    return item != nullptr && (item->itemType() == ItemTypes::part || item->itemType() == ItemTypes::directory);
}

bool OpcPackageModel::isNameFree(const PartDirectory& directory, const QString& name) const
{
    const auto hasName = [&](const auto& item) { return item->name().compare(name, Qt::CaseInsensitive) == 0; };
    const auto& directories = directory.directories();
    const auto& parts = directory.parts();
    return std::none_of(directories.begin(), directories.end(), hasName) &&
           std::none_of(parts.begin(), parts.end(), hasName);
}

bool OpcPackageModel::addDirectory(const QString& name, const QModelIndex& parent)
{
    ModelItem* const item = itemFromIndex(parent);
    if (item == nullptr || item->itemType() != ItemTypes::directory)
        return false;
    auto& directory = static_cast<PartDirectory&>(*item);
    if (!isNameFree(directory, name))
        return false;
    const int row = directory.rowCount();
    beginInsertRows(parent, row, row);
    directory.directory(name);
    endInsertRows();
    return true;
}

Expected<void, ErrorCode2> OpcPackageModel::addFile(const FilePath2& file, const QModelIndex& parent,
                                                    const MIMEType& mimeType, const QModelIndex&,
                                                    const String2& relationshipType,
                                                    OpcPackageCompressionType compression)
{
    return tryInvoke([&] {
        ModelItem* const item = itemFromIndex(parent);
        if (item->itemType() != ItemTypes::directory)
            throw SystemError{OpcError::notADirectory};
        auto& directory = static_cast<PartDirectory&>(*item);
        const FilePath2 name = file.filename().value();
        const FilePath2 path = directory.path() /= name;
        // Announced behind the directories, although the row stands ahead of them or there is none: views lay the
        // directory out anew whatever row they hear of, and scripts have come to count these signals.
        const int row = directory.rowCount();
        beginInsertRows(parent, row, row);
        // A file that the package refuses has no row, and nobody is told why.
        if (const auto part = createPart(file, path, mimeType, relationshipType, compression))
            insertPart(directory, toQString(name), part->uri().value());
        endInsertRows();
    });
}

OpcPackageModel::ModelItem* OpcPackageModel::itemFromIndex(const QModelIndex& index)
{
    return static_cast<ModelItem*>(index.internalPointer());
}

void OpcPackageModel::addParts()
{
    if (package() == nullptr)
        return;
    const auto parts = package()->parts();
    if (!parts)
        return;
    for (auto it = parts->begin(); it != decltype(it)::Sentinel{}; ++it)
        addPart(*it);
}

void OpcPackageModel::addPart(const OpcPackagePart& part)
{
    const auto path = localPath(part);
    if (!path)
        return;
    const auto name = path->filename();
    if (!name)
        return;
    TreeItems::directoryBelow(m_parts.get(), PathElements::parentPath(path->c_str()))
        ->addPart(toQString(*name), part.uri().value());
}

Expected<OpcPackagePart, ErrorCode2> OpcPackageModel::createPart(const FilePath2& file, const FilePath2& path,
                                                                 const MIMEType& mimeType,
                                                                 const String2& relationshipType,
                                                                 OpcPackageCompressionType compression)
{
    return tryInvoke([&]() -> Expected<OpcPackagePart, ErrorCode2> {
        if (package() == nullptr)
            throw SystemError{OpcError::packageInUse};
        const OpcPackagePartUri uri{path};
        auto part = package()->createPart(uri, mimeType, compression);
        if (!part)
            return part;
        // What fails from here on leaves the part in the package, where a package view shows it next time.
        part->writeContentFromFile(file, OpcPackagePartWriteContentMode::replace).value();
        (void)package()->createRelationship(uri, OpcTargetMode::internal, relationshipType).value();
        return part;
    });
}

void OpcPackageModel::insertPart(PartDirectory& directory, const QString& name, OpcPackagePartUri uri)
{
    // The announced row lies behind all others, so that nobody else moves the indexes of the directories, which the new
    // part pushes down: selections and open branches would end up on their neighbours.
    QModelIndexList before;
    QModelIndexList after;
    int row = directory.partCount();
    for (const auto& each : directory.directories()) {
        ModelItem* const item = each.get();
        before.append(createIndex(row, 0, item));
        after.append(createIndex(++row, 0, item));
    }
    directory.addPart(name, std::move(uri));
    changePersistentIndexList(before, after);
}

} // namespace Kelvaris::System::IO::OpcPackaging
