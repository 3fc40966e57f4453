#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/example_part.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// One example of an open barrel.
struct ExamplesEntry
{
    QString title;
    QString description;
    QStringList keywords;
    Kelvaris::System::IO::Bundle::ExamplePart part; ///< for the documentation and for unpacking
};

/// The examples of one barrel, which the model keeps open, as a flat list of one column, read only.
///
/// `setBundle` emits the pair of reset signals; no other signal is ever emitted.
class ExamplesModel : public QAbstractItemModel
{
public:
    /// The numbers are this model's own: those of ExampleBrowser2ExampleModel mean other things.
    enum Role : int {
        DescriptionRole = Qt::UserRole,
        DocumentationRole, ///< the bytes of the example's page, read anew each time; empty when there is none to be had
        TitleRole,
        KeywordsRole, ///< a `QStringList`
    };

    /// Shows a new, empty barrel.
    /// @throws bad_expected_access<ErrorCode2>  none can be made
    explicit ExamplesModel(QObject* parent = nullptr);

    /// Shows `barrel` in the place of the one before. The model owns it from now on.
    /// @throws bad_expected_access<ErrorCode2>  one of the examples cannot be opened; the list is empty then
    void setBundle(Kelvaris::System::IO::Bundle::BarrelOfExamplesBundle barrel);

    /// Unpacks the example of a row into `directory`; nothing for an index that has none.
    /// @throws bad_expected_access<ErrorCode2>  the example cannot be opened or not be unpacked
    void unpack(const QModelIndex& index, const Kelvaris::System::FilePath2& directory) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;

    /// The title for `Qt::DisplayRole`, otherwise what the roles above name; nothing for `Qt::EditRole`.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<ExamplesEntry> readEntries() const;

    Kelvaris::System::IO::Bundle::BarrelOfExamplesBundle m_bundle;
    std::vector<ExamplesEntry> m_entries;
};
