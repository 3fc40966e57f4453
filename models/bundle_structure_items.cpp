#include "models/bundle_structure_items.h"

#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/qt/text_bridge.h"

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <cstddef>
#include <utility>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace detail {

namespace {

template <class Uri>
QString textOf(const Expected<Uri, ErrorCode2>& uri)
{
    return utf8ToQString(uri.value().toString().value()).value();
}

// A name begins with "/", so that piece 0 is the empty text ahead of it. Empty pieces further on are folders too.
void placePart(BranchItem* branch, const QString& uri)
{
    const QVector<QStringRef> pieces = uri.splitRef(QLatin1Char{'/'});
    for (int i = 1; i < pieces.size() - 1; ++i)
        branch = branch->directory(pieces[i].toString());
    branch->addPart(pieces.last().toString());
}

// Relationships have no rows. Their sources are read all the same, so that a package with one that cannot be read is
// not shown as if it were whole.
void readRelationships(const OpcPackage& package)
{
    const OpcPackageRelationshipCollection relationships = package.relationships().value();
    for (auto it = relationships.begin(); it != decltype(it)::Sentinel{}; ++it)
        textOf((*it).sourceUri());
}

} // namespace

AbstractBundleStructureModelItem::AbstractBundleStructureModelItem(const QString& name, BranchItem* parent)
    : m_name{name}, m_parent{parent}
{
}

AbstractBundleStructureModelItem::~AbstractBundleStructureModelItem() = default;

NodeItem::~NodeItem() = default;

AbstractBundleStructureModelItem* NodeItem::child(int) const
{
    return nullptr;
}

bool NodeItem::isBranch() const
{
    return false;
}

int NodeItem::childCount() const
{
    return 0;
}

BranchItem::~BranchItem()
{
    TreeItems::release(std::move(m_children), [](AbstractBundleStructureModelItem& item) {
        return item.isBranch() ? std::exchange(static_cast<BranchItem&>(item).m_children, {}) : decltype(m_children){};
    });
}

AbstractBundleStructureModelItem* BranchItem::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    return m_children[static_cast<std::size_t>(index)].get();
}

bool BranchItem::isBranch() const
{
    return true;
}

int BranchItem::childCount() const
{
    return static_cast<int>(m_children.size());
}

QString BranchItem::sizeText() const
{
    return QStringLiteral("%1 items").arg(childCount(), 0, 10, QLatin1Char{' '});
}

BranchItem* BranchItem::directory(const QString& name)
{
    return TreeItems::findOrMake(m_directories, name, [&] {
        auto folder = std::make_shared<PartBranchItem>(name, this);
        m_children.push_back(folder);
        return folder.get();
    });
}

void BranchItem::addPart(const QString& name)
{
    m_children.push_back(std::make_shared<PartNodeItem>(name, this));
}

int BranchItem::positionOf(const AbstractBundleStructureModelItem* child) const
{
    return TreeItems::positionOf(m_children, child);
}

PartNodeItem::~PartNodeItem() = default;

QString PartNodeItem::mimeTypeText() const
{
    return {};
}

QString PartNodeItem::sizeText() const
{
    return {};
}

QString PartNodeItem::typeText() const
{
    return {};
}

int PartNodeItem::itemKind() const
{
    return 0;
}

PartBranchItem::~PartBranchItem() = default;

QString PartBranchItem::mimeTypeText() const
{
    return {};
}

QString PartBranchItem::typeText() const
{
    return QStringLiteral("folder");
}

int PartBranchItem::itemKind() const
{
    return 1;
}

RootBundleStructureModelItem::RootBundleStructureModelItem() : BranchItem{{}, nullptr} {}

RootBundleStructureModelItem::RootBundleStructureModelItem(const OpcPackage& package) : RootBundleStructureModelItem{}
{
    const OpcPackagePartCollection parts = package.parts().value();
    for (auto it = parts.begin(); it != decltype(it)::Sentinel{}; ++it)
        placePart(this, textOf((*it).uri()));
    readRelationships(package);
}

RootBundleStructureModelItem::~RootBundleStructureModelItem() = default;

QString RootBundleStructureModelItem::mimeTypeText() const
{
    return {};
}

QString RootBundleStructureModelItem::sizeText() const
{
    return {};
}

QString RootBundleStructureModelItem::typeText() const
{
    return {};
}

int RootBundleStructureModelItem::itemKind() const
{
    return 2;
}

} // namespace detail
