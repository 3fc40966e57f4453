#pragma once

#include "kelvaris/system/io/bundle/example_part.h"
#include "models/examples_bundle_content_model.h"
#include "models/examples_bundle_path_items.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>
#include <memory>
#include <vector>

namespace Kelvaris::System::IO::Bundle {

class ExamplesBundleContentModel::PropertyItem : public ModelItem
{
public:
    using Setter = std::function<QString(const QVariant&)>;

    /// @param setter  stores a value and gives the text to show for it
    PropertyItem(ModelItem* parent, const QString& name, const QString& value, Setter setter);
    ~PropertyItem() override;

    PropertyItem(PropertyItem&&) noexcept = default;

    QVariant data(int column, int role) const override;
    bool setData(int column, const QVariant& value, int role) override;

private:
    QString m_name;
    QString m_value;
    Setter m_setter;
};

class ExamplesBundleContentModel::PropertiesItem : public ModelItem
{
public:
    /// @param part  outlives this item; no rows for null
    /// @throws bad_expected_access<ErrorCode2>  the properties cannot be reached, or the title has no text
    PropertiesItem(ModelItem* parent, AbstractBundlePart* part);
    ~PropertiesItem() override;

    ModelItem* child(int row) override;
    int columnCount() const override;
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;

private:
    OpcPackaging::OpcPackageProperties& packageProperties() const;
    QString setTitle(const QVariant& value) const;

    std::vector<PropertyItem> m_properties;
    AbstractBundlePart* m_part;
};

class ExamplesBundleContentModel::ExamplePropertiesItem : public PropertiesItem
{
public:
    using PropertiesItem::PropertiesItem;
    ~ExamplePropertiesItem() override;
};

class ExamplesBundleContentModel::ExamplesPropertiesItem : public PropertiesItem
{
public:
    using PropertiesItem::PropertiesItem;
    ~ExamplesPropertiesItem() override;
};

class ExamplesBundleContentModel::ExampleItem : public ModelItem
{
public:
    /// @param part  kept as a copy, so that the item outlives the barrel
    /// @throws bad_expected_access<ErrorCode2>  the example could be opened and its content not be walked
    ExampleItem(ModelItem* parent, const ExamplePart& part);
    ~ExampleItem() override;

    ModelItem* child(int row) override;
    QVariant data(int column, int role) const override;
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;

private:
    void addFiles(const ExampleBundle& example);

    QString m_name;
    ExamplePart m_part;
    std::unique_ptr<RootDirectoryItem> m_rootDirectory;
    std::unique_ptr<ExamplePropertiesItem> m_properties;
};

class ExamplesBundleContentModel::ExamplesItem : public ModelItem
{
public:
    using ModelItem::ModelItem;
    ~ExamplesItem() override;

    ModelItem* child(int row) override;
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;

    /// Takes the place of the examples of the last barrel, which stay alive until `forgetReplaced`.
    /// @throws bad_expected_access<ErrorCode2>  an example cannot be read; those before it are in the tree
    void replace(const BarrelOfExamplesBundle& barrel);
    void forgetReplaced();

private:
    std::vector<std::shared_ptr<ExampleItem>> m_children;
    std::vector<std::shared_ptr<ExampleItem>> m_replaced;
};

class ExamplesBundleContentModel::RootItem : public ModelItem
{
public:
    RootItem();
    ~RootItem() override;

    ModelItem* child(int row) override;
    int rowOf(const ModelItem* child) const override;
    int rowCount() const override;

    ExamplesItem& examples() noexcept { return *m_examples; }

private:
    std::unique_ptr<ExamplesItem> m_examples;
    std::unique_ptr<ExamplesPropertiesItem> m_properties;
};

} // namespace Kelvaris::System::IO::Bundle
