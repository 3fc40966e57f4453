#include "editors/example_bundle_editor.h"

#include "authoring/guarded.h"
#include "editors/show_window.h"
#include "models/example_bundle_properties_model.h"

#include <QtWidgets/QMenu>

namespace Kelvaris::System::IO::Bundle {

namespace {

constexpr int hasPrimaryFile = 1;

constexpr int partItem = 0;

} // namespace

ExampleBundleEditor::ExampleBundleEditor(QWidget* parent) : ContentBundleEditor{parent}
{
    addRequirement(hasPrimaryFile, QStringLiteral("Bundle has primary file selected."), false);
}

ExampleBundleEditor::~ExampleBundleEditor() = default;

void ExampleBundleEditor::setBundle(std::unique_ptr<ExampleBundle> bundle)
{
    ContentBundleEditor::setBundle(std::move(bundle));
    setRequirementFulfilled(hasPrimaryFile, contentModel()->hasPrimaryFile());
}

ExampleBundleContentModel* ExampleBundleEditor::contentModel() const
{
    return static_cast<ExampleBundleContentModel*>(ContentBundleEditor::contentModel());
}

ContentBundleContentModel* ExampleBundleEditor::createContentModel(QObject* parent) const
{
    return new ExampleBundleContentModel{parent};
}

BundlePropertiesModel* ExampleBundleEditor::createPropertiesModel(QObject* parent) const
{
    return new ExampleBundlePropertiesModel{parent};
}

void ExampleBundleEditor::populateContextMenu(QMenu& menu, const QModelIndex& index)
{
    ContentBundleEditor::populateContextMenu(menu, index);
    if (index.data(Qt::UserRole).toInt() == partItem)
        menu.addAction(QStringLiteral("Set Primary"), this, guarded([this, index] { setPrimaryFile(index); }));
}

void ExampleBundleEditor::setPrimaryFile(const QModelIndex& index)
{
    contentModel()->setPrimaryFile(index.data(Qt::UserRole + 1).toString());
    setRequirementFulfilled(hasPrimaryFile, true);
}

void openExampleBundleEditor(const std::optional<FilePath2>& path)
{
    auto bundle = path ? ExampleBundle::open(*path) : ExampleBundle::create();
    auto owned = std::make_unique<ExampleBundle>(std::move(bundle).value());
    auto editor = std::make_unique<ExampleBundleEditor>();
    editor->setBundle(std::move(owned));
    editor->resize(workingSize);
    showAndRelease(std::move(editor));
}

} // namespace Kelvaris::System::IO::Bundle
