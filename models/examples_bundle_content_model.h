#pragma once

#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"

#include <QtCore/QAbstractItemModel>

#include <memory>

namespace Kelvaris::System::IO::Bundle {

/// A barrel of examples as one tree, of which several views show a branch each:
///
///     row 0: the examples
///       row n: an example, with its title
///         row 0: its files, the folder "content" left out
///         row 1: its properties, in two columns
///     row 1: the properties of the barrel, which has none to show
///
/// The barrel is read once, in `setBundle`, and not kept. Only a property's value can change, by `setData`: no cell is
/// marked editable. Signals: a model reset in `setBundle`, none in `setData`.
class ExamplesBundleContentModel : public QAbstractItemModel
{
public:
    class ModelItem;
    class PathItem;
    class FileItem;
    class DirectoryItem;
    class RootDirectoryItem;
    class PropertyItem;
    class PropertiesItem;
    class ExamplePropertiesItem;
    class ExamplesPropertiesItem;
    class ExampleItem;
    class ExamplesItem;
    class RootItem;

    explicit ExamplesBundleContentModel(QObject* parent = nullptr);
    ~ExamplesBundleContentModel() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;

    /// 2 below the properties of an example or of the barrel, 1 everywhere else.
    int columnCount(const QModelIndex& parent = {}) const override;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Changes a property's value, in column 1 and with `Qt::EditRole` only, without a signal. The row of the example
    /// keeps its old title. A value that the example refuses goes unnoticed.
    /// @throws bad_expected_access<ErrorCode2>  `value`'s text is no valid Unicode
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    /// Shows the examples of a barrel. An example that cannot be opened is a row without a title and without files.
    /// @param barrel  not null
    /// @throws bad_expected_access<ErrorCode2>  the barrel's examples, or the content of one of them, cannot be walked;
    ///          the model reset stays open then, with the examples read so far in the tree
    void setBundle(std::unique_ptr<BarrelOfExamplesBundle> barrel);

    QModelIndex examplesIndex() const;
    QModelIndex examplesPropertiesIndex() const;

    /// @param row  of an example below `examplesIndex()`
    QModelIndex exampleContentIndex(int row) const;
    QModelIndex examplePropertiesIndex(int row) const;

private:
    ModelItem* itemFromIndex(const QModelIndex& index) const;

    std::unique_ptr<RootItem> m_root;
};

} // namespace Kelvaris::System::IO::Bundle
