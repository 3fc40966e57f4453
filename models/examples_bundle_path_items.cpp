#include "models/examples_bundle_path_items.h"

#include "models/part_path.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace Kelvaris::System::IO::Bundle {

ExamplesBundleContentModel::ModelItem::~ModelItem() = default;

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::ModelItem::child(int)
{
    return nullptr;
}

int ExamplesBundleContentModel::ModelItem::columnCount() const
{
    return 1;
}

QVariant ExamplesBundleContentModel::ModelItem::data(int, int) const
{
    return {};
}

int ExamplesBundleContentModel::ModelItem::rowOf(const ModelItem*) const
{
    return -1;
}

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::ModelItem::parent() const
{
    return m_parent;
}

int ExamplesBundleContentModel::ModelItem::rowCount() const
{
    return 0;
}

bool ExamplesBundleContentModel::ModelItem::setData(int, const QVariant&, int)
{
    return false;
}

ExamplesBundleContentModel::PathItem::PathItem(const QString& name, ModelItem* parent) : ModelItem{parent}, m_name{name}
{
}

ExamplesBundleContentModel::PathItem::~PathItem() = default;

QVariant ExamplesBundleContentModel::PathItem::data(int, int role) const
{
    return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant{m_name} : QVariant{};
}

ExamplesBundleContentModel::FileItem::~FileItem() = default;

bool ExamplesBundleContentModel::FileItem::isFile() const
{
    return true;
}

bool ExamplesBundleContentModel::FileItem::isDirectory() const
{
    return false;
}

ExamplesBundleContentModel::DirectoryItem::~DirectoryItem()
{
    TreeItems::release(std::move(m_children), [](PathItem& item) {
        return item.isDirectory() ? std::exchange(static_cast<DirectoryItem&>(item).m_children, {})
                                  : decltype(m_children){};
    });
}

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::DirectoryItem::child(int row)
{
    return m_children[static_cast<std::size_t>(row)].get();
}

int ExamplesBundleContentModel::DirectoryItem::rowOf(const ModelItem* child) const
{
    return TreeItems::positionOf(m_children, child);
}

int ExamplesBundleContentModel::DirectoryItem::rowCount() const
{
    return static_cast<int>(m_children.size());
}

bool ExamplesBundleContentModel::DirectoryItem::isFile() const
{
    return false;
}

bool ExamplesBundleContentModel::DirectoryItem::isDirectory() const
{
    return true;
}

ExamplesBundleContentModel::DirectoryItem* ExamplesBundleContentModel::DirectoryItem::directory(const QString& name)
{
    return TreeItems::findOrMake(m_directories, TreeItems::NameInAnyCase{name}, [&] {
        auto made = std::make_shared<DirectoryItem>(name, this);
        m_children.push_back(made);
        return made.get();
    });
}

void ExamplesBundleContentModel::DirectoryItem::addFile(const QString& name)
{
    m_children.push_back(std::make_shared<FileItem>(name, this));
}

ExamplesBundleContentModel::RootDirectoryItem::~RootDirectoryItem() = default;

ExamplesBundleContentModel::DirectoryItem* ExamplesBundleContentModel::RootDirectoryItem::directory(const QString& name)
{
    if (name.compare(QLatin1String{"content"}, Qt::CaseInsensitive) == 0)
        return this;
    return DirectoryItem::directory(name);
}

void ExamplesBundleContentModel::RootDirectoryItem::addPart(const OpcPackaging::OpcPackagePart& part)
{
    const FilePath2 path = localPath(part).value();
    const std::wstring_view name = PathElements::lastElement(path.c_str());
    TreeItems::directoryBelow<DirectoryItem>(this, PathElements::parentPath(path.c_str()))
        ->addFile(QString::fromWCharArray(name.data(), static_cast<int>(name.size())));
}

} // namespace Kelvaris::System::IO::Bundle
