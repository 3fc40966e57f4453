#include "browsers/examples_browser.h"

#include "authoring/guarded.h"
#include "browsers/examples_model.h"
#include "browsers/examples_sort_filter_proxy_model.h"
#include "browsers/html_page_view.h"
#include "kelvaris/system/qt/path_bridge.h"

#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Kelvaris::System;

namespace {

/// What the page shows of an example: its documentation, or its description in the place of one.
QByteArray pageOf(const QModelIndex& index)
{
    const QByteArray documentation = index.data(ExamplesModel::DocumentationRole).toByteArray();
    return documentation.isEmpty() ? index.data(ExamplesModel::DescriptionRole).toByteArray() : documentation;
}

} // namespace

ExamplesBrowser::ExamplesBrowser(QWidget* parent)
    : QWidget{parent}, m_examplesModel{new ExamplesModel{this}}, m_proxyModel{new ExamplesSortFilterProxyModel{this}}
{
    m_proxyModel->setSourceModel(m_examplesModel);
    auto* const view = new QTreeView;
    auto* const searchBox = new QLineEdit;
    HtmlPageView& page = newHtmlPageView();
    layOut(view, searchBox, &page.widget());
    connectView(view, page);
    connect(searchBox, &QLineEdit::textChanged, m_proxyModel,
            [this](const QString& text) { m_proxyModel->setFilterRegularExpression(searchPattern(text)); });
}

ExamplesBrowser::~ExamplesBrowser() = default;

void ExamplesBrowser::layOut(QTreeView* view, QLineEdit* searchBox, QWidget* page)
{
    view->setModel(m_proxyModel);
    view->setHeaderHidden(true);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    // a page asks for so much room that on a small screen it would leave the titles next to none
    view->setMinimumWidth(view->sizeHint().width());
    view->setAccessibleName(QStringLiteral("Examples"));
    searchBox->setPlaceholderText(QStringLiteral("Search"));
    searchBox->setAccessibleName(QStringLiteral("Search examples"));
    page->setAccessibleName(QStringLiteral("Documentation"));

    auto* const layout = new QHBoxLayout{this};
    auto* const left = new QVBoxLayout;
    layout->addLayout(left);
    left->addWidget(view);
    left->addWidget(searchBox);
    layout->addWidget(page);
}

void ExamplesBrowser::connectView(QTreeView* view, HtmlPageView& page)
{
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, &page.widget(),
            guarded([&page](const QModelIndex& current, const QModelIndex&) { page.setContent(pageOf(current)); }));
    connect(view, &QTreeView::customContextMenuRequested, this,
            guarded([this, view](const QPoint& position) { showContextMenu(*view, position); }));
}

void ExamplesBrowser::setBundle(IO::Bundle::BarrelOfExamplesBundle barrel)
{
    m_examplesModel->setBundle(std::move(barrel));
}

void ExamplesBrowser::showContextMenu(const QTreeView& view, const QPoint& position)
{
    const QModelIndex index = view.indexAt(position);
    if (!index.isValid())
        return;
    QMenu menu;
    QAction* const start = menu.addAction(QStringLiteral("Start new design with..."));
    start->setShortcut(QKeySequence{});
    connect(start, &QAction::triggered, this, guarded([this, index] { askAndUnpack(index); }));
    // exec takes a global position, and this is not one: it is where this window has always put its menu.
    menu.exec(menu.mapFromGlobal(view.mapToGlobal(position)));
}

void ExamplesBrowser::askAndUnpack(const QModelIndex& index)
{
    const QString directory = QFileDialog::getExistingDirectory(this, QStringLiteral("Directory to Save Example to"),
                                                                QString{}, QFileDialog::ShowDirsOnly);
    if (!directory.isEmpty())
        m_examplesModel->unpack(m_proxyModel->mapToSource(index), toFilePath2(directory));
}
