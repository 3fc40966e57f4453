#include "host/shell/function_pane.h"

#include "host/shell/fixed_font.h"
#include "host/shell/with_label.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTextBrowser>

namespace HostShell {

namespace {

QString pageOf(const FunctionHelp& function)
{
    const QString text =
        function.markdown.isEmpty() ? FunctionPane::tr("There is no documentation.") : function.markdown;
    return QStringLiteral("### `%1`\n\n%2").arg(function.signature, text);
}

// Code stands in the font of the scripts.
void setCodeFont(QTextDocument& document)
{
    QTextCharFormat code;
    code.setFontFamily(fixedFont().family());
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (!block.blockFormat().hasProperty(QTextFormat::BlockCodeFence))
            continue;
        QTextCursor cursor{block};
        cursor.select(QTextCursor::BlockUnderCursor);
        cursor.mergeCharFormat(code);
    }
}

} // namespace

FunctionPane::FunctionPane(QWidget* parent)
    : QSplitter{Qt::Vertical, parent}, m_functions{helpOfAll()}, m_list{new QListWidget}, m_documentation{
                                                                                              new QTextBrowser}
{
    setObjectName(QStringLiteral("functionPane"));
    setChildrenCollapsible(false);
    m_list->setObjectName(QStringLiteral("functionList"));
    m_documentation->setObjectName(QStringLiteral("documentationPane"));
    m_documentation->setTabChangesFocus(true);
    m_documentation->setOpenLinks(false);
    addWidget(withLabel(tr("F&unctions"), m_list));
    addWidget(withLabel(tr("&Documentation"), m_documentation));
    for (const FunctionHelp& function : m_functions)
        m_list->addItem(function.name);
    connect(m_list, &QListWidget::currentRowChanged, this, &FunctionPane::showDocumentation);
    connect(m_list, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { Q_EMIT chosen(item->text()); });
    m_list->setCurrentRow(0);
}

void FunctionPane::show(const QString& function)
{
    const QList<QListWidgetItem*> found = m_list->findItems(function, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty())
        m_list->setCurrentItem(found.front());
}

void FunctionPane::showDocumentation(int row)
{
    if (row < 0)
        return;
    m_documentation->setMarkdown(pageOf(m_functions.at(static_cast<std::size_t>(row))));
    setCodeFont(*m_documentation->document());
}

} // namespace HostShell
