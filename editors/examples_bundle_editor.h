#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "models/examples_bundle_content_model.h"
#include "ui_examples_bundle_editor.h"

#include <QtWidgets/QDialog>

#include <memory>
#include <optional>

namespace Kelvaris::System::IO::Bundle {

/// Lays a barrel of examples out in panes: its examples, and the properties and files of the one that is current.
///
/// The model lets go of the barrel once it has read it, so that there is nothing to save: both buttons only close the
/// dialog.
class ExamplesBundleEditor : public QDialog
{
public:
    explicit ExamplesBundleEditor(QWidget* parent = nullptr);
    ~ExamplesBundleEditor() override;

    /// Shows a barrel. `bundle` is read and destroyed before this returns.
    /// @throws bad_expected_access<ErrorCode2>  an example cannot be reached; the dialog is of no use then
    void setBundle(std::unique_ptr<BarrelOfExamplesBundle> bundle);

private:
    void showCurrentExample();

    Ui_ExamplesBundleEditor m_ui;
    ExamplesBundleContentModel* m_model; // a child
};

/// Opens a window on the barrel at `path`, or on an empty one, and returns at once; the window deletes itself when it
/// is closed.
/// @throws bad_expected_access<ErrorCode2>  the barrel cannot be opened or walked; there is no window then
void openExamplesBundleEditor(const std::optional<FilePath2>& path);

} // namespace Kelvaris::System::IO::Bundle
