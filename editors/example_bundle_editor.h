#pragma once

#include "editors/content_bundle_editor.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "models/example_bundle_content_model.h"

#include <memory>
#include <optional>

namespace Kelvaris::System::IO::Bundle {

/// The editor of a content bundle for an example: before Save is enabled, one file has to be chosen as the primary
/// file.
class ExampleBundleEditor : public ContentBundleEditor
{
public:
    explicit ExampleBundleEditor(QWidget* parent = nullptr);
    ~ExampleBundleEditor() override;

    /// Shows `bundle`, which the editor and its models own from now on. Hides the base's operation: the models of this
    /// class need an example.
    void setBundle(std::unique_ptr<ExampleBundle> bundle);

protected:
    ExampleBundleContentModel* contentModel() const override;
    ContentBundleContentModel* createContentModel(QObject* parent) const override;
    BundlePropertiesModel* createPropertiesModel(QObject* parent) const override;
    void populateContextMenu(QMenu& menu, const QModelIndex& index) override;

private:
    void setPrimaryFile(const QModelIndex& index);
};

/// Opens a window on the example bundle at `path`, or on a new one, and returns at once; the window deletes itself when
/// it is closed.
/// @throws bad_expected_access<ErrorCode2>  the file cannot be opened as an example bundle; there is no window then
void openExampleBundleEditor(const std::optional<FilePath2>& path);

} // namespace Kelvaris::System::IO::Bundle
