#include "editors/scriptable_bundle_editor.h"

#include "authoring/bundle_texts.h"
#include "authoring/guarded.h"
#include "authoring/path_conversion.h"
#include "editors/editor_dialogs.h"
#include "editors/expansion_limit.h"
#include "editors/show_window.h"
#include "kelvaris/system/file_system.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/qt/text_bridge.h"
#include "kelvaris/system/text_conversion.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QTreeView>

using namespace Kelvaris::System;
using IO::Bundle::ScriptableBundle;
using IO::OpcPackaging::OpcPackageCompressionType;
using IO::OpcPackaging::OpcPackageModel;

namespace {

/// What the model is given to let go of a package that it borrowed.
constexpr IO::OpcPackaging::OpcPackage* noPackage = nullptr;

constexpr int partItem = 0;
constexpr int directoryItem = 1;

} // namespace

ScriptableBundleEditor::ScriptableBundleEditor(QWidget* parent)
    : QWidget{parent}, m_packageView{new QTreeView{this}}, m_scriptEdit{new QTextEdit{this}},
      m_bundle{ScriptableBundle::create().value()}, m_packageModel{new OpcPackageModel{this}}
{
    layOutWidgets();
    m_packageModel->setPackage(&m_bundle.package());
    m_packageView->setModel(m_packageModel);
    m_packageView->setHeaderHidden(true);
    m_packageView->setContextMenuPolicy(Qt::CustomContextMenu);
    m_packageView->setAccessibleName(QStringLiteral("Package"));
    limitExpansion(m_packageView);
    m_scriptEdit->setAccessibleName(QStringLiteral("Script"));
    // Tab would otherwise never leave the text
    m_scriptEdit->setTabChangesFocus(true);

    auto* buttons = new QDialogButtonBox{QDialogButtonBox::Save, this};
    layout()->addWidget(buttons);
    connectWidgets(*buttons);
}

ScriptableBundleEditor::~ScriptableBundleEditor()
{
    // the model borrows the package, and children go after the members
    m_packageModel->setPackage(noPackage);
}

void ScriptableBundleEditor::layOutWidgets()
{
    auto* layout = new QVBoxLayout{this};
    auto* splitter = new QSplitter{this};
    splitter->addWidget(m_packageView);
    splitter->addWidget(m_scriptEdit);
    layout->addWidget(splitter);
}

void ScriptableBundleEditor::connectWidgets(QDialogButtonBox& buttons)
{
    connect(&buttons, &QDialogButtonBox::accepted, this, guarded([this] { save(); }));
    connect(m_packageView, &QWidget::customContextMenuRequested, this,
            guarded([this](const QPoint& position) { showContextMenu(position); }));
}

void ScriptableBundleEditor::openBundle(const std::wstring& path)
{
    m_packageModel->setPackage(noPackage);
    m_bundle = ScriptableBundle::open(FilePath2{path.data(), path.size()}).value();
    m_packageModel->setPackage(&m_bundle.package());
}

void ScriptableBundleEditor::save()
{
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save scriptable bundle as..."), {},
                                                      QString::fromLatin1(BundleTexts::scriptableBundleFilter));
    if (path.isEmpty())
        return;
    storeScript();
    const auto saved = m_bundle.writeToFile(toFilePath2(path));
    if (!saved)
        EditorDialogs::warnOfFailedSave(this, saved.error());
}

void ScriptableBundleEditor::storeScript()
{
    const auto stored = m_bundle.setScript(qStringToUTF8(m_scriptEdit->toPlainText()).value());
    // the save goes on without the script: the files are worth keeping
    if (!stored)
        EditorDialogs::warnOfFailedSave(this, stored.error());
}

void ScriptableBundleEditor::showContextMenu(const QPoint& position)
{
    const QModelIndex index = m_packageView->indexAt(position);
    if (!index.isValid())
        return;
    QMenu menu;
    populateContextMenu(menu, index);
    menu.exec(m_packageView->viewport()->mapToGlobal(position));
}

void ScriptableBundleEditor::populateContextMenu(QMenu& menu, const QModelIndex& index)
{
    const int itemType = index.data(Qt::UserRole).toInt();
    if (itemType == directoryItem)
        menu.addAction(QStringLiteral("Add Directory"), this, guarded([this, index] { addDirectory(index); }));
    // offered on a part too, where the model refuses the file: menu and model differ on purpose
    if (itemType == directoryItem || itemType == partItem)
        menu.addAction(QStringLiteral("Add File"), this, guarded([this, index] { addFile(index); }));
}

void ScriptableBundleEditor::addDirectory(const QModelIndex& index)
{
    const QString name = EditorDialogs::askForDirectoryName(this);
    if (!name.isEmpty())
        m_packageModel->addDirectory(name, index);
}

void ScriptableBundleEditor::addFile(const QModelIndex& index)
{
    const QString path = EditorDialogs::askForFileToAdd(this);
    if (path.isEmpty())
        return;
    const String2 relationshipType = utf16ToUtf8(BundleTexts::contentRelationshipType).value();
    const FilePath2 file = toFilePath2(path);
    const IO::MIMEType type{FileSystem::type(FilePath{Authoring::toStdPath(file)})};
    // a refused file is not told to the user: the tree that does not show it tells it
    (void)m_packageModel->addFile(file, index, type, m_packageModel->partsIndex(), relationshipType,
                                  OpcPackageCompressionType::normal);
}

void openScriptableBundleEditor(const std::optional<std::wstring>& path)
{
    auto editor = std::make_unique<ScriptableBundleEditor>();
    if (path)
        editor->openBundle(*path);
    showAndRelease(std::move(editor));
}
