#pragma once

#include "kelvaris/system/file_path2.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// One example of a barrel: its texts, and where to find it again.
struct ExampleEntry
{
    QString title;
    QString description;
    QString manufacturer;
    QStringList keywords;
    QString barrelPath; ///< as it was handed in
    QString partUri;    ///< the example's part in the barrel, percent-encoded
};

/// The examples of several barrels as one flat, unsorted list of one column, read only.
///
/// The model holds copies of the texts and no barrel, so that nothing reads a file after `addBarrels`. An index is good
/// until the next append. `addBarrels` emits one pair of insertion signals; no other signal is ever emitted.
class ExampleBrowser2ExampleModel : public QAbstractItemModel
{
public:
    enum Role : int {
        TitleRole = Qt::UserRole,
        DescriptionRole,
        KeywordsRole, ///< a `QStringList`
        ManufacturerRole,
        BarrelPathRole,
        PartUriRole,
    };

    explicit ExampleBrowser2ExampleModel(QObject* parent = nullptr);

    /// Appends the examples of all barrels: the barrels in order, and each one's examples in theirs.
    ///
    /// A barrel that cannot be opened is logged under "example browser" and left out; an example whose own bundle
    /// cannot be opened is left out in silence. Two barrels with the same example give two rows.
    ///
    /// @throws bad_expected_access<ErrorCode2>  a barrel that was opened has a relationship to no example; no row is
    ///                                          added then
    void addBarrels(const std::vector<Kelvaris::System::FilePath2>& files);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;

    /// All rows, whatever the parent is.
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;

    /// The title for `Qt::DisplayRole` and `Qt::EditRole`, otherwise what the roles above name.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<ExampleEntry> m_entries;
};
