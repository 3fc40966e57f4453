#include "models/examples_bundle_items.h"

#include "kelvaris/system/qt/text_bridge.h"
#include "models/part_path.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace Kelvaris::System::IO::Bundle {

using OpcPackaging::OpcPackageProperties;

ExamplesBundleContentModel::PropertyItem::PropertyItem(ModelItem* parent, const QString& name, const QString& value,
                                                       Setter setter)
    : ModelItem{parent}, m_name{name}, m_value{value}, m_setter{std::move(setter)}
{
}

ExamplesBundleContentModel::PropertyItem::~PropertyItem() = default;

QVariant ExamplesBundleContentModel::PropertyItem::data(int column, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    if (column == 0)
        return m_name;
    return column == 1 ? QVariant{m_value} : QVariant{};
}

bool ExamplesBundleContentModel::PropertyItem::setData(int column, const QVariant& value, int role)
{
    if (column != 1 || role != Qt::EditRole)
        return false;
    m_value = m_setter(value);
    return true;
}

ExamplesBundleContentModel::PropertiesItem::PropertiesItem(ModelItem* parent, AbstractBundlePart* part)
    : ModelItem{parent}, m_part{part}
{
    if (m_part == nullptr)
        return;
    const QString title = utf8ToQString(packageProperties().title().valueOr({})).value();
    m_properties.emplace_back(this, QStringLiteral("Title"), title,
                              [this](const QVariant& value) { return setTitle(value); });
}

ExamplesBundleContentModel::PropertiesItem::~PropertiesItem() = default;

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::PropertiesItem::child(int row)
{
    return &m_properties[static_cast<std::size_t>(row)];
}

int ExamplesBundleContentModel::PropertiesItem::columnCount() const
{
    return 2;
}

int ExamplesBundleContentModel::PropertiesItem::rowOf(const ModelItem* child) const
{
    for (std::size_t row = 0; row < m_properties.size(); ++row) {
        if (&m_properties[row] == child)
            return static_cast<int>(row);
    }
    return -1;
}

int ExamplesBundleContentModel::PropertiesItem::rowCount() const
{
    return static_cast<int>(m_properties.size());
}

OpcPackageProperties& ExamplesBundleContentModel::PropertiesItem::packageProperties() const
{
    return *m_part->package().packageProperties().value();
}

QString ExamplesBundleContentModel::PropertiesItem::setTitle(const QVariant& value) const
{
    // A title that the package refuses goes unnoticed: the cell keeps what was typed.
    (void)packageProperties().setTitle(qStringToUTF8(value.toString()).value());
    return value.toString();
}

ExamplesBundleContentModel::ExamplePropertiesItem::~ExamplePropertiesItem() = default;

ExamplesBundleContentModel::ExamplesPropertiesItem::~ExamplesPropertiesItem() = default;

ExamplesBundleContentModel::ExampleItem::ExampleItem(ModelItem* parent, const ExamplePart& part)
    : ModelItem{parent}, m_part{part}, m_rootDirectory{std::make_unique<RootDirectoryItem>(QString{}, this)},
      m_properties{std::make_unique<ExamplePropertiesItem>(this, &m_part)}
{
    const auto example = m_part.bundle();
    if (!example)
        return;
    m_name = utf8ToQString(example->title().valueOr({})).valueOr({});
    addFiles(*example);
}

ExamplesBundleContentModel::ExampleItem::~ExampleItem() = default;

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::ExampleItem::child(int row)
{
    if (row == 0)
        return m_rootDirectory.get();
    return row == 1 ? m_properties.get() : nullptr;
}

QVariant ExamplesBundleContentModel::ExampleItem::data(int, int role) const
{
    return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant{m_name} : QVariant{};
}

int ExamplesBundleContentModel::ExampleItem::rowOf(const ModelItem* child) const
{
    if (child == m_rootDirectory.get())
        return 0;
    return child == m_properties.get() ? 1 : -1;
}

int ExamplesBundleContentModel::ExampleItem::rowCount() const
{
    return 2;
}

void ExamplesBundleContentModel::ExampleItem::addFiles(const ExampleBundle& example)
{
    const auto relationships = example.contentRelationships().value();
    for (auto it = relationships.begin(); it != decltype(it)::Sentinel{}; ++it)
        m_rootDirectory->addPart(example.part(*it).value());
}

ExamplesBundleContentModel::ExamplesItem::~ExamplesItem() = default;

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::ExamplesItem::child(int row)
{
    return m_children[static_cast<std::size_t>(row)].get();
}

int ExamplesBundleContentModel::ExamplesItem::rowOf(const ModelItem* child) const
{
    return TreeItems::positionOf(m_children, child);
}

int ExamplesBundleContentModel::ExamplesItem::rowCount() const
{
    return static_cast<int>(m_children.size());
}

void ExamplesBundleContentModel::ExamplesItem::replace(const BarrelOfExamplesBundle& barrel)
{
    m_replaced.insert(m_replaced.end(), std::make_move_iterator(m_children.begin()),
                      std::make_move_iterator(m_children.end()));
    m_children.clear();
    m_children.reserve(barrel.numberExamples());
    const auto relationships = barrel.exampleRelationships().value();
    for (auto it = relationships.begin(); it != decltype(it)::Sentinel{}; ++it)
        m_children.push_back(std::make_shared<ExampleItem>(this, barrel.example(*it).value()));
}

void ExamplesBundleContentModel::ExamplesItem::forgetReplaced()
{
    m_replaced.clear();
}

ExamplesBundleContentModel::RootItem::RootItem()
    : ModelItem{nullptr}, m_examples{std::make_unique<ExamplesItem>(this)},
      m_properties{std::make_unique<ExamplesPropertiesItem>(this, nullptr)}
{
}

ExamplesBundleContentModel::RootItem::~RootItem() = default;

ExamplesBundleContentModel::ModelItem* ExamplesBundleContentModel::RootItem::child(int row)
{
    if (row == 0)
        return m_examples.get();
    return row == 1 ? m_properties.get() : nullptr;
}

int ExamplesBundleContentModel::RootItem::rowOf(const ModelItem* child) const
{
    if (child == m_examples.get())
        return 0;
    return child == m_properties.get() ? 1 : -1;
}

int ExamplesBundleContentModel::RootItem::rowCount() const
{
    return 2;
}

} // namespace Kelvaris::System::IO::Bundle
