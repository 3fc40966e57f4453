#include "browsers/prototype_examples_widget.h"

#include "browsers/prototype_examples_filter_proxy_model.h"

#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

PrototypeExamplesWidget::PrototypeExamplesWidget(QWidget* parent)
    : QWidget{parent}, m_view{new QTreeView{this}}, m_searchBox{new QLineEdit{this}},
      m_proxyModel{new PrototypeExamplesFilterProxyModel{m_view}}
{
    m_proxyModel->setFilterRole(Qt::EditRole);
    m_view->setModel(m_proxyModel);
    m_view->setAccessibleName(QStringLiteral("Examples"));
    m_searchBox->setPlaceholderText(QStringLiteral("Search"));
    m_searchBox->setAccessibleName(QStringLiteral("Search examples"));

    auto* const layout = new QVBoxLayout{this};
    layout->addWidget(m_view);
    layout->addWidget(m_searchBox);
    connect(m_searchBox, &QLineEdit::textChanged, m_proxyModel,
            [this](const QString& text) { m_proxyModel->setFilterRegularExpression(searchPattern(text)); });
}
