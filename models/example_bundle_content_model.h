#pragma once

#include "kelvaris/system/io/bundle/example_bundle.h"
#include "models/content_bundle_content_model.h"

#include <QtGui/QIcon>

#include <optional>

namespace Kelvaris::System::IO::Bundle {

/// The content of an example, with a red square (`Qt::DecorationRole`) before the primary file.
///
/// Besides the signals of the base: `dataChanged` with `Qt::DecorationRole` for the top-level rows in `setPrimaryFile`.
class ExampleBundleContentModel : public ContentBundleContentModel
{
public:
    explicit ExampleBundleContentModel(QObject* parent = nullptr);
    ~ExampleBundleContentModel() override;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// @param bundle  not null
    void setBundle(std::shared_ptr<ExampleBundle> bundle);

    std::shared_ptr<ExampleBundle> bundle() const;

    /// Whether the bundle named a primary file when it was set, or one was set since.
    bool hasPrimaryFile() const noexcept { return m_primaryFile.has_value(); }

    /// Makes a row's file the primary one, in the bundle and in the tree. A file that the bundle refuses goes
    /// unnoticed.
    /// @param path  the row's path, as `ItemRoles::path` gives it
    /// @throws bad_expected_access<ErrorCode2>  `path` is no valid Unicode; the mark has moved then, the bundle has not
    ///          changed
    void setPrimaryFile(const QString& path);

protected:
    void bundleChanged() override;

private:
    std::optional<QString> m_primaryFile;
    QIcon m_primaryFileIcon;
};

} // namespace Kelvaris::System::IO::Bundle
