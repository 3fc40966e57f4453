#pragma once

#include "authoring/prototype_examples_entry.h"
#include "kelvaris/system/file_path2.h"

#include <QtCore/QAbstractItemModel>

#include <vector>

/// The example bundles found in a directory and below it as a flat table: title, description, keywords. Read only, in
/// the order in which the file system gave them; it never changes and emits no signal.
class PrototypeExamplesModel : public QAbstractItemModel
{
public:
    /// Walks `directory` to its end.
    /// @throws what Authoring::findExampleBundles throws
    PrototypeExamplesModel(const Kelvaris::System::FilePath2& directory, QObject* parent);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;

    /// For `Qt::DisplayRole` and `Qt::EditRole`; keywords are one text for the first and a `QStringList` for the
    /// second.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::vector<PrototypeExamplesEntry> m_entries;
};
