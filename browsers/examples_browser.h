#pragma once

#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"

#include <QtWidgets/QWidget>

class ExamplesModel;
class ExamplesSortFilterProxyModel;
class HtmlPageView;
class QLineEdit;
class QTreeView;

/// A window with the examples of one barrel and the page of the current one. An example is unpacked from the context
/// menu; nothing is written over, and a failure goes to the log.
class ExamplesBrowser : public QWidget
{
public:
    /// Shows no example.
    explicit ExamplesBrowser(QWidget* parent = nullptr);
    ~ExamplesBrowser() override;

    /// Shows the examples of `barrel`, which the browser owns from now on.
    /// @throws what ExamplesModel::setBundle throws
    void setBundle(Kelvaris::System::IO::Bundle::BarrelOfExamplesBundle barrel);

private:
    void layOut(QTreeView* view, QLineEdit* searchBox, QWidget* page);
    void connectView(QTreeView* view, HtmlPageView& page);
    void showContextMenu(const QTreeView& view, const QPoint& position);
    void askAndUnpack(const QModelIndex& index);

    ExamplesModel* const m_examplesModel; // a child of the window, as the next one
    ExamplesSortFilterProxyModel* const m_proxyModel;
};
