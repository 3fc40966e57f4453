#include "editors/content_bundle_editor.h"

#include "authoring/bundle_texts.h"
#include "authoring/guarded.h"
#include "editors/editor_dialogs.h"
#include "editors/expansion_limit.h"
#include "editors/guarded_item_delegate.h"
#include "kelvaris/system/qt/path_bridge.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

namespace Kelvaris::System::IO::Bundle {

namespace {

constexpr int hasContent = 0;

constexpr int partItem = 0;
constexpr int directoryItem = 1;

} // namespace

ContentBundleEditor::ContentBundleEditor(QWidget* parent)
    : QWidget{parent}, m_contentView{new QTreeView{this}}, m_propertiesView{new QTableView{this}},
      m_contentProxy{new QSortFilterProxyModel{this}}, m_propertiesProxy{new QSortFilterProxyModel{this}},
      m_requirementList{new detail::RequirementList{this}}, m_requirementsView{new QListView{this}},
      m_buttonBox{new QDialogButtonBox{QDialogButtonBox::Save, this}}
{
    setUpViews();
    layOutWidgets();
    connectWidgets();
    addRequirement(hasContent, QStringLiteral("Bundle has content."), false);
}

ContentBundleEditor::~ContentBundleEditor() = default;

void ContentBundleEditor::setUpViews()
{
    m_contentView->setHeaderHidden(true);
    m_contentView->setContextMenuPolicy(Qt::CustomContextMenu);
    m_contentView->setModel(m_contentProxy);
    m_contentView->setAccessibleName(QStringLiteral("Content"));
    limitExpansion(m_contentView);

    m_propertiesView->horizontalHeader()->setStretchLastSection(true);
    m_propertiesView->verticalHeader()->hide();
    m_propertiesView->setModel(m_propertiesProxy);
    // arrow keys go from cell to cell; Tab would otherwise never leave the table
    m_propertiesView->setTabKeyNavigation(false);
    m_propertiesView->setItemDelegate(new GuardedItemDelegate{m_propertiesView});
    m_propertiesView->setAccessibleName(QStringLiteral("Properties"));

    m_requirementsView->setModel(m_requirementList);
    m_requirementsView->setAccessibleName(QStringLiteral("Requirements"));
}

void ContentBundleEditor::layOutWidgets()
{
    auto* layout = new QVBoxLayout{this};
    auto* upper = new QHBoxLayout;
    layout->addLayout(upper);
    upper->addWidget(m_propertiesView);
    upper->addWidget(m_contentView);
    layout->addWidget(m_requirementsView);
    layout->addWidget(m_buttonBox);
    setTabOrder(m_propertiesView, m_contentView);
    setTabOrder(m_contentView, m_requirementsView);
}

void ContentBundleEditor::connectWidgets()
{
    // through the virtual operation, so that a subclass's own way to save is reached
    connect(m_buttonBox, &QDialogButtonBox::accepted, this, guarded([this] { saveBundle(); }));
    connect(m_contentView, &QWidget::customContextMenuRequested, this,
            guarded([this](const QPoint& position) { showContextMenu(position); }));
    connect(m_requirementList, &detail::RequirementList::fulfillmentStatusChanged, m_buttonBox,
            [box = m_buttonBox](int fulfilled, int requirements) {
                box->button(QDialogButtonBox::Save)->setEnabled(fulfilled == requirements);
            });
}

void ContentBundleEditor::setBundle(std::unique_ptr<ContentBundle> bundle)
{
    createModels();
    m_bundle = std::move(bundle);
    m_contentModel->setBundle(m_bundle);
    m_propertiesModel->setBundle(m_bundle);
    m_propertiesView->resizeColumnToContents(0);
    if (const auto relationships = m_bundle->contentRelationships()) {
        const auto first = relationships->begin();
        setRequirementFulfilled(hasContent,
                                first != OpcPackaging::OpcPackageRelationshipCollectionIterator::Sentinel{});
    }
}

void ContentBundleEditor::createModels()
{
    if (m_contentModel == nullptr) {
        m_contentModel = createContentModel(this);
        m_contentProxy->setSourceModel(m_contentModel);
    }
    if (m_propertiesModel == nullptr) {
        m_propertiesModel = createPropertiesModel(this);
        m_propertiesProxy->setSourceModel(m_propertiesModel);
    }
}

void ContentBundleEditor::addRequirement(int id, const QString& text, bool fulfilled)
{
    m_requirementList->addRequirement(id, text, fulfilled);
}

void ContentBundleEditor::setRequirementFulfilled(int id, bool fulfilled)
{
    m_requirementList->setRequirementFulfilled(id, fulfilled);
}

ContentBundleContentModel* ContentBundleEditor::contentModel() const
{
    return m_contentModel;
}

ContentBundleContentModel* ContentBundleEditor::createContentModel(QObject* parent) const
{
    return new ContentBundleContentModel{parent};
}

BundlePropertiesModel* ContentBundleEditor::createPropertiesModel(QObject* parent) const
{
    return new BundlePropertiesModel{parent};
}

void ContentBundleEditor::saveBundle()
{
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save bundle as..."), {},
                                                      QString::fromLatin1(BundleTexts::contentBundleFilter));
    if (path.isEmpty())
        return;
    const auto saved = m_bundle->writeToFile(toFilePath2(path));
    if (!saved)
        EditorDialogs::warnOfFailedSave(this, saved.error());
}

void ContentBundleEditor::showContextMenu(const QPoint& position)
{
    const QModelIndex index = m_contentView->indexAt(position);
    if (!index.isValid())
        return;
    QMenu menu;
    populateContextMenu(menu, index);
    menu.exec(m_contentView->viewport()->mapToGlobal(position));
}

void ContentBundleEditor::populateContextMenu(QMenu& menu, const QModelIndex& index)
{
    const int itemType = index.data(Qt::UserRole).toInt();
    if (itemType == directoryItem)
        menu.addAction(QStringLiteral("Add Directory"), this, guarded([this, index] { addDirectory(index); }));
    // offered on a part too, where the model refuses the file: menu and model differ on purpose
    if (itemType == directoryItem || itemType == partItem)
        menu.addAction(QStringLiteral("Add File"), this, guarded([this, index] { addFile(index); }));
}

QModelIndex ContentBundleEditor::toContentIndex(const QModelIndex& viewIndex) const
{
    return m_contentProxy->mapToSource(viewIndex);
}

void ContentBundleEditor::addDirectory(const QModelIndex& index)
{
    const QString name = EditorDialogs::askForDirectoryName(this);
    if (name.isEmpty())
        return;
    contentModel()->addDirectory(name, toContentIndex(index));
    // the model announces a row also for a directory that is there already; the proxy would keep it as an empty one
    m_contentProxy->invalidate();
}

void ContentBundleEditor::addFile(const QModelIndex& index)
{
    const QString path = EditorDialogs::askForFileToAdd(this);
    if (path.isEmpty())
        return;
    // a refused file is not told to the user: the requirement that stays red tells it
    if (contentModel()->addFile(toFilePath2(path), toContentIndex(index)))
        setRequirementFulfilled(hasContent, true);
}

} // namespace Kelvaris::System::IO::Bundle
