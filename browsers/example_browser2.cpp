#include "browsers/example_browser2.h"

#include "authoring/guarded.h"
#include "browsers/example_browser2_example_model.h"
#include "browsers/example_browser2_example_sort_filter_model.h"
#include "browsers/example_browser2_filters_model.h"
#include "browsers/example_location.h"
#include "browsers/pattern_matcher.h"
#include "browsers/title_delegate.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/qt/text_bridge.h"

#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QShortcut>

#include <utility>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

/// Unpacks an example into `target`; gives the name of its primary file's part.
Expected<OpcPackagePartUri, ErrorCode2> unpackExample(const FilePath2& barrelPath, const OpcPackagePartUri& partUri,
                                                      const FilePath2& target)
{
    const auto unpack = [&target](ExampleBundle bundle) {
        return bundle.unpack(target)
            .andThen([&] { return bundle.primaryFileRelationship(); })
            .andThen(
                [&](const OpcPackageRelationship& primary) { return bundle.package().partFromRelationship(primary); })
            .andThen([](const OpcPackagePart& part) { return part.uri(); });
    };
    return BarrelOfExamplesBundle::open(barrelPath)
        .andThen([&](const BarrelOfExamplesBundle& barrel) { return barrel.example(partUri); })
        .andThen([](const ExamplePart& part) { return part.bundle(); })
        .andThen(unpack);
}

/// Where a part of an unpacked bundle lies.
/// @throws bad_expected_access<ErrorCode2>  the name denotes no local file
FilePath2 unpackedFile(const FilePath2& directory, const OpcPackagePartUri& uri)
{
    FilePath2 file = directory;
    file /= uri.toUri().value().toLocalFile(UrlLocalFileOptions::relativePath).value();
    return toFilePath2(normalLocation(file));
}

} // namespace

ExampleBrowser2::ExampleBrowser2(QWidget* parent)
    : QDialog{parent}, m_form{}, m_exampleModel{new ExampleBrowser2ExampleModel{this}},
      m_sortFilterModel{new ExampleBrowser2ExampleSortFilterModel{this}}, m_filtersModel{
                                                                              new ExampleBrowser2FiltersModel{this}}
{
    m_form.setupUi(this);
    setUpViews();
    m_form.stackedWidget->setCurrentWidget(m_form.browsePage);
    m_form.backButton->hide();
    m_form.createButton->hide();
    m_form.nextButton->setEnabled(false);
    connectBrowsePage();
    connectConfigurePage();
    letReturnPressButtons();
}

ExampleBrowser2::~ExampleBrowser2() = default;

void ExampleBrowser2::setUpViews()
{
    m_sortFilterModel->setSourceModel(m_exampleModel);
    deselectRowsThatGo();
    m_form.examplesView->setModel(m_sortFilterModel);
    m_form.examplesView->setItemDelegate(new TitleDelegate{m_form.examplesView});
    m_form.filterView->setModel(m_filtersModel);
}

void ExampleBrowser2::deselectRowsThatGo()
{
    // Connected ahead of the view, which would otherwise select a neighbour of a selected row that is filtered out:
    // "Next" would lead to an example that nobody chose.
    connect(m_sortFilterModel, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex&, int first, int last) {
                const int current = m_form.examplesView->currentIndex().row();
                if (first <= current && current <= last)
                    m_form.examplesView->selectionModel()->clear();
            });
}

void ExampleBrowser2::connectBrowsePage()
{
    connect(m_form.examplesView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) { m_form.nextButton->setEnabled(!selected.isEmpty()); });
    connect(m_form.nextButton, &QPushButton::clicked, this,
            [this] { m_form.stackedWidget->setCurrentWidget(m_form.configurePage); });
    connect(m_form.backButton, &QPushButton::clicked, this,
            [this] { m_form.stackedWidget->setCurrentWidget(m_form.browsePage); });
    connect(m_form.createButton, &QPushButton::clicked, this, guarded([this] { createExample(); }));
    connect(m_form.examplesView, &QListView::activated, this,
            [this] { m_form.stackedWidget->setCurrentWidget(m_form.configurePage); });
    connect(m_form.searchBox, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_sortFilterModel->setFilterRegularExpression(searchPattern(text)); });
}

void ExampleBrowser2::connectConfigurePage()
{
    connect(m_form.stackedWidget, &QStackedWidget::currentChanged, this, guarded([this] { updatePage(); }));
    // While a path is being typed it may name a file, a directory that must not be read or one too long; none of that
    // may interrupt the typing.
    connect(m_form.targetDirectoryBox, &QLineEdit::textChanged, this,
            guarded([this](const QString& text) { updateLocationWarning(text); }));
    connect(m_form.selectDirectoryButton, &QToolButton::clicked, this, guarded([this] { chooseTargetDirectory(); }));
    connect(m_filtersModel, &ExampleBrowser2FiltersModel::selectedManufacturersChanged, m_sortFilterModel,
            &ExampleBrowser2ExampleSortFilterModel::setManufacturers);
}

void ExampleBrowser2::letReturnPressButtons()
{
    // No button is the dialog's default one: Return in the search box must not leave the page, and Return in the list
    // must not press a button of the page that it leads to. So Return works on the button with the focus alone.
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{
             m_form.selectDirectoryButton, m_form.backButton, m_form.nextButton, m_form.createButton}) {
        for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
            auto* shortcut = new QShortcut{QKeySequence{key}, button};
            shortcut->setContext(Qt::WidgetShortcut);
            connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
        }
    }
}

void ExampleBrowser2::addBarrels(const std::vector<FilePath2>& files)
{
    m_exampleModel->addBarrels(files);
}

void ExampleBrowser2::updatePage()
{
    if (m_form.stackedWidget->currentWidget() == m_form.configurePage)
        showConfigurePage();
    else
        showBrowsePage();
}

void ExampleBrowser2::showBrowsePage()
{
    m_form.nextButton->show();
    m_form.examplesView->setFocus();
    m_form.backButton->hide();
    m_form.createButton->hide();
}

void ExampleBrowser2::showConfigurePage()
{
    // The focus moves first: hiding the button that holds it would send it to a neighbour.
    m_form.targetDirectoryBox->setFocus();
    m_form.nextButton->hide();
    m_form.backButton->show();
    m_form.createButton->show();

    const QString title = m_form.examplesView->currentIndex().data(Qt::DisplayRole).toString();
    m_form.exampleName->setText(title);
    m_form.targetDirectoryBox->setText(proposeLocation(m_targetDirectory, title));
}

void ExampleBrowser2::updateLocationWarning(const QString& text)
{
    m_form.locationWarningLabel->setVisible(holdsEntries(text));
}

void ExampleBrowser2::chooseTargetDirectory()
{
    const QString directory = QFileDialog::getExistingDirectory(
        this, QStringLiteral("Choose target directory"), m_form.targetDirectoryBox->text(), QFileDialog::ShowDirsOnly);
    if (!directory.isEmpty())
        m_form.targetDirectoryBox->setText(directory);
}

void ExampleBrowser2::createExample()
{
    const FilePath2 target = toFilePath2(m_form.targetDirectoryBox->text());
    const QModelIndex current = m_form.examplesView->currentIndex();
    const QString barrel = current.data(ExampleBrowser2ExampleModel::BarrelPathRole).toString();
    const QString partUri = current.data(ExampleBrowser2ExampleModel::PartUriRole).toString();

    const auto primary = unpackExample(toFilePath2(barrel), OpcPackagePartUri{partUri.toStdWString().c_str()}, target);
    if (!primary) {
        warnCreateFailed(primary.error());
        return;
    }
    m_createdExampleFile = unpackedFile(target, *primary);
    accept();
}

void ExampleBrowser2::warnCreateFailed(const ErrorCode2& error)
{
    const QString message = utf8ToQString(error.message()).valueOr({});
    QMessageBox box{QMessageBox::Warning, QStringLiteral("Create example failed"),
                    QStringLiteral("Create example failed: \n") + message, QMessageBox::Ok, this};
    // the message names files of the bundle, and a file name may look like markup
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

Expected<FilePath2, ErrorCode2> runExampleBrowser2(const std::vector<FilePath2>& files,
                                                   const FilePath2& targetDirectory, const std::optional<QString>&,
                                                   QWidget* parent)
{
    ExampleBrowser2 dialog{parent};
    dialog.setTargetDirectory(targetDirectory);
    dialog.addBarrels(files);
    if (dialog.exec() == QDialog::Accepted)
        return dialog.createdExampleFile();
    return ErrorCode2{static_cast<int>(CoreError::cancelled), core_error_category()};
}
