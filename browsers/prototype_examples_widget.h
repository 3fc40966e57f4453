#pragma once

#include <QtWidgets/QWidget>

class PrototypeExamplesFilterProxyModel;
class QLineEdit;
class QTreeView;

/// A table of example bundles with a search box. It shows them and does nothing else.
class PrototypeExamplesWidget : public QWidget
{
public:
    explicit PrototypeExamplesWidget(QWidget* parent = nullptr);

    /// Takes the table as its source model. Owned by the view.
    PrototypeExamplesFilterProxyModel& proxyModel() const { return *m_proxyModel; }

private:
    QTreeView* const m_view; // a child of the window, as the next one
    QLineEdit* const m_searchBox;
    PrototypeExamplesFilterProxyModel* const m_proxyModel; // a child of the view
};
