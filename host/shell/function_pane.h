#pragma once

#include "host/shell/function_help.h"

#include <QtWidgets/QSplitter>

#include <vector>

class QListWidget;
class QTextBrowser;

namespace HostShell {

/// The list of the functions above the documentation of the current one.
class FunctionPane : public QSplitter
{
    Q_OBJECT

public:
    explicit FunctionPane(QWidget* parent = nullptr);

    /// Makes the function of that name the current one.
    void show(const QString& function);

Q_SIGNALS:
    /// A double click or Return on a function.
    void chosen(const QString& function);

private:
    void showDocumentation(int row);

    std::vector<FunctionHelp> m_functions;
    QListWidget* m_list;
    QTextBrowser* m_documentation;
};

} // namespace HostShell
