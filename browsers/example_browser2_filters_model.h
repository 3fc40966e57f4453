#pragma once

#include <QtCore/QAbstractItemModel>
#include <QtCore/QStringList>

#include <memory>

class QJsonDocument;

/// The tree of check boxes beside the list of examples: categories with their options, read from a resource of the
/// module. One column, no headers.
///
/// Categories and options stand in the order of their names. Options alone have check boxes, all clear at first. Only
/// those of the category "Manufacturer" have an effect; the others keep their state and nothing reads it.
///
/// A change of a check box emits `dataChanged`, and one of a manufacturer `selectedManufacturersChanged` behind it.
class ExampleBrowser2FiltersModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// Reads the options of the resource. When it is missing, a line goes to the log and the tree stays empty.
    explicit ExampleBrowser2FiltersModel(QObject* parent = nullptr);
    ~ExampleBrowser2FiltersModel() override;

    /// Shows the options of `document` in the place of those before; every check box is clear then.
    ///
    /// @param document  an object of categories, each an object of options, each an object with the text "description";
    ///                  what is no object counts as an empty one
    void loadOptions(const QJsonDocument& document);

    /// The names of the checked manufacturers, in the order of the tree.
    QStringList selectedManufacturers() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Takes `Qt::CheckStateRole` of an option only. What cannot be read as a check state clears the box.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

Q_SIGNALS:
    /// A check box of a manufacturer was set, also to the state that it had. The empty list means all manufacturers.
    void selectedManufacturersChanged(const QStringList& manufacturers, QPrivateSignal);

private:
    class ModelItem;
    class Root;
    class Category;
    class Option;

    void loadResource();
    ModelItem* itemAt(const QModelIndex& index) const;
    int manufacturerRow() const;

    std::unique_ptr<Root> m_root;
};
