#include "browsers/example_browser2_filters_model.h"

#include "kelvaris/system/application.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMetaEnum>

#include <algorithm>
#include <utility>
#include <vector>

class ExampleBrowser2FiltersModel::ModelItem
{
public:
    ModelItem(QString itemName, ModelItem* itemParent) : name{std::move(itemName)}, parentItem{itemParent} {}
    virtual ~ModelItem() = default;

    virtual ModelItem* childAt(int row) const = 0;

    virtual QVariant itemData(int role) const
    {
        return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant{name} : QVariant{};
    }

    virtual int indexOfChild(const ModelItem* child) const = 0;
    virtual bool isCheckable() const { return false; }
    virtual int childCount() const = 0;

    QString name;
    ModelItem* parentItem; // not owned
};

class ExampleBrowser2FiltersModel::Option : public ModelItem
{
public:
    Option(const QString& optionName, const QJsonObject& object, ModelItem* category)
        : ModelItem{optionName, category}, description{object.value(QLatin1String{"description"}).toString()}
    {
    }

    ModelItem* childAt(int) const override { return nullptr; }

    QVariant itemData(int role) const override
    {
        return role == Qt::CheckStateRole ? QVariant{checkState} : ModelItem::itemData(role);
    }

    int indexOfChild(const ModelItem*) const override { return -1; }
    bool isCheckable() const override { return true; }
    int childCount() const override { return 0; }

    QString description; // kept with the option; no view shows it

    // A number, since a view may hand in one that is no enumerator.
    int checkState = Qt::Unchecked;
};

class ExampleBrowser2FiltersModel::Category : public ModelItem
{
public:
    Category(const QString& categoryName, const QJsonObject& options, ModelItem* root) : ModelItem{categoryName, root}
    {
        children.reserve(static_cast<std::size_t>(options.size()));
        for (auto option = options.begin(); option != options.end(); ++option)
            children.push_back(std::make_shared<Option>(option.key(), option.value().toObject(), this));
    }

    ModelItem* childAt(int row) const override { return children[static_cast<std::size_t>(row)].get(); }

    int indexOfChild(const ModelItem* child) const override
    {
        const auto found = std::ranges::find(children, child, &std::shared_ptr<Option>::get);
        return found == children.end() ? -1 : static_cast<int>(found - children.begin());
    }

    int childCount() const override { return static_cast<int>(children.size()); }

    QStringList checkedNames() const
    {
        QStringList names;
        for (const auto& option : children) {
            // half checked is not checked
            if (option->isCheckable() && option->checkState == Qt::Checked)
                names += option->name;
        }
        return names;
    }

    std::vector<std::shared_ptr<Option>> children;
};

class ExampleBrowser2FiltersModel::Root : public ModelItem
{
public:
    Root() : ModelItem{{}, nullptr} {}

    void fill(const QJsonObject& categories)
    {
        children.clear();
        children.reserve(static_cast<std::size_t>(categories.size()));
        for (auto category = categories.begin(); category != categories.end(); ++category)
            children.push_back(std::make_shared<Category>(category.key(), category.value().toObject(), this));
    }

    ModelItem* childAt(int row) const override { return children[static_cast<std::size_t>(row)].get(); }

    int indexOfChild(const ModelItem* child) const override
    {
        const auto found = std::ranges::find(children, child, &std::shared_ptr<Category>::get);
        return found == children.end() ? -1 : static_cast<int>(found - children.begin());
    }

    int childCount() const override { return static_cast<int>(children.size()); }

    std::vector<std::shared_ptr<Category>> children;
};

namespace {

/// As a conversion to the metatype of `Qt::CheckState` gives it, a number or names of states, without asking for that
/// type: to ask is to register it, and Qt would keep functions of this library for it, and call them, long after the
/// library has been unloaded.
int toCheckState(const QVariant& value)
{
    bool isState = false;
    const qlonglong number = value.toLongLong(&isState);
    if (isState)
        return static_cast<int>(number);
    const int named = QMetaEnum::fromType<Qt::CheckState>().keysToValue(value.toByteArray().constData(), &isState);
    return isState ? named : static_cast<int>(Qt::Unchecked);
}

} // namespace

ExampleBrowser2FiltersModel::ExampleBrowser2FiltersModel(QObject* parent)
    : QAbstractItemModel{parent}, m_root{std::make_unique<Root>()}
{
    loadResource();
}

ExampleBrowser2FiltersModel::~ExampleBrowser2FiltersModel() = default;

void ExampleBrowser2FiltersModel::loadResource()
{
    QFile file{QStringLiteral(":/hollerwick/data/example_browser_filter_options.json")};
    if (!file.open(QIODevice::ReadOnly)) {
        auto& logger = Kelvaris::System::Application::instance()->logger();
        logger.error("ui", "Unable to open default example browser filter options");
        return;
    }
    loadOptions(QJsonDocument::fromJson(file.readAll()));
}

void ExampleBrowser2FiltersModel::loadOptions(const QJsonDocument& document)
{
    beginResetModel();
    m_root->fill(document.object());
    endResetModel();
}

QStringList ExampleBrowser2FiltersModel::selectedManufacturers() const
{
    const int row = manufacturerRow();
    return row < 0 ? QStringList{} : m_root->children[static_cast<std::size_t>(row)]->checkedNames();
}

QModelIndex ExampleBrowser2FiltersModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, itemAt(parent)->childAt(row));
}

QModelIndex ExampleBrowser2FiltersModel::parent(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    ModelItem* const item = itemAt(index)->parentItem;
    if (item->parentItem == nullptr)
        return {};
    return createIndex(item->parentItem->indexOfChild(item), 0, item);
}

int ExampleBrowser2FiltersModel::rowCount(const QModelIndex& parent) const
{
    return itemAt(parent)->childCount();
}

int ExampleBrowser2FiltersModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ExampleBrowser2FiltersModel::data(const QModelIndex& index, int role) const
{
    return index.isValid() ? itemAt(index)->itemData(role) : QVariant{};
}

Qt::ItemFlags ExampleBrowser2FiltersModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    return itemAt(index)->isCheckable() ? flags | Qt::ItemIsUserCheckable : flags;
}

bool ExampleBrowser2FiltersModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole || !itemAt(index)->isCheckable())
        return false;
    static_cast<Option*>(itemAt(index))->checkState = toCheckState(value);
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});

    // An option called "Manufacturer" of another category, or one of the same name elsewhere, filters nothing.
    const int row = manufacturerRow();
    if (row >= 0 && index.parent() == this->index(row, 0))
        Q_EMIT selectedManufacturersChanged(selectedManufacturers(), QPrivateSignal{});
    return true;
}

ExampleBrowser2FiltersModel::ModelItem* ExampleBrowser2FiltersModel::itemAt(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<ModelItem*>(index.internalPointer()) : m_root.get();
}

int ExampleBrowser2FiltersModel::manufacturerRow() const
{
    const auto isManufacturer = [](const auto& category) { return category->name == QLatin1String{"Manufacturer"}; };
    const auto found = std::ranges::find_if(m_root->children, isManufacturer);
    return found == m_root->children.end() ? -1 : static_cast<int>(found - m_root->children.begin());
}
