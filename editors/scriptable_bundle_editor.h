#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/scriptable_bundle.h"
#include "models/opc_package_model.h"

#include <QtCore/QModelIndex>
#include <QtWidgets/QWidget>

#include <optional>
#include <string>

class QMenu;
class QTextEdit;
class QTreeView;

/// A window on a scriptable bundle: the package's tree, the text of the script, and a Save button that is always
/// enabled.
///
/// Opening a bundle does not read its script into the window, and saving writes what the window holds over it.
class ScriptableBundleEditor : public QWidget
{
public:
    /// Starts on a new bundle of its own.
    /// @throws bad_expected_access<ErrorCode2>  the bundle cannot be made
    explicit ScriptableBundleEditor(QWidget* parent = nullptr);
    ~ScriptableBundleEditor() override;

    /// Replaces the bundle with one read from a file.
    /// @throws bad_expected_access<ErrorCode2>  it cannot be opened; the tree is empty then
    void openBundle(const std::wstring& path);

private:
    void layOutWidgets();
    void connectWidgets(class QDialogButtonBox& buttons);
    void save();
    void storeScript();
    void showContextMenu(const QPoint& position);
    void populateContextMenu(QMenu& menu, const QModelIndex& index);
    void addDirectory(const QModelIndex& index);
    void addFile(const QModelIndex& index);

    QTreeView* m_packageView;
    QTextEdit* m_scriptEdit;
    Kelvaris::System::IO::Bundle::ScriptableBundle m_bundle;
    Kelvaris::System::IO::OpcPackaging::OpcPackageModel* m_packageModel; // a child; borrows the bundle's package
};

/// Opens a window on the bundle at `path`, or on a new one, and returns at once; the window deletes itself when it is
/// closed.
/// @throws bad_expected_access<ErrorCode2>  the bundle cannot be opened; there is no window then
void openScriptableBundleEditor(const std::optional<std::wstring>& path);
