#include "editors/examples_bundle_editor.h"

#include "editors/show_window.h"

namespace Kelvaris::System::IO::Bundle {

namespace {

void showBranch(QAbstractItemView& view, QAbstractItemModel& model, const QModelIndex& branch)
{
    view.setModel(&model);
    view.setRootIndex(branch);
}

} // namespace

ExamplesBundleEditor::ExamplesBundleEditor(QWidget* parent)
    : QDialog{parent}, m_model{new ExamplesBundleContentModel{this}}
{
    m_ui.setupUi(this);
    m_ui.examplesList->setModel(m_model);
    m_ui.examplesPropertyTable->setModel(m_model);
    // after setModel, which replaces the selection model
    connect(m_ui.examplesList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ExamplesBundleEditor::showCurrentExample);
}

ExamplesBundleEditor::~ExamplesBundleEditor() = default;

void ExamplesBundleEditor::setBundle(std::unique_ptr<BarrelOfExamplesBundle> bundle)
{
    m_model->setBundle(std::move(bundle));
    m_ui.examplesList->setRootIndex(m_model->examplesIndex());
    m_ui.examplesPropertyTable->setRootIndex(m_model->examplesPropertiesIndex());
}

void ExamplesBundleEditor::showCurrentExample()
{
    const QModelIndex current = m_ui.examplesList->currentIndex();
    if (!current.isValid()) {
        m_ui.exampleContentView->setModel(nullptr);
        m_ui.examplePropertyTable->setModel(nullptr);
        return;
    }
    showBranch(*m_ui.exampleContentView, *m_model, m_model->exampleContentIndex(current.row()));
    showBranch(*m_ui.examplePropertyTable, *m_model, m_model->examplePropertiesIndex(current.row()));
}

void openExamplesBundleEditor(const std::optional<FilePath2>& path)
{
    auto barrel = path ? BarrelOfExamplesBundle::open(*path) : BarrelOfExamplesBundle::create();
    auto owned = std::make_unique<BarrelOfExamplesBundle>(std::move(barrel).value());
    auto editor = std::make_unique<ExamplesBundleEditor>();
    editor->setBundle(std::move(owned));
    showAndRelease(std::move(editor));
}

} // namespace Kelvaris::System::IO::Bundle
