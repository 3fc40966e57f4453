#include "host/shell/window_menu.h"

#include "host/shell/console_memory.h"
#include "host/support/function_registry.h"

#include <QtWidgets/QFileDialog>

namespace HostShell {

namespace {

std::vector<std::string> toTexts(const QStringList& texts)
{
    std::vector<std::string> all;
    for (const QString& text : texts)
        all.push_back(text.toStdString());
    return all;
}

} // namespace

WindowMenu::WindowMenu(ConsoleMemory& memory, QWidget* parent) : QMenu{tr("&Windows"), parent}, m_memory{memory}
{
    addEntry(tr("New &design from examples…"), "_example_browser_2", &WindowMenu::askForBarrelsAndPlace);
    addEntry(tr("&Browse a barrel of examples…"), "_proto_examples_browser2", &WindowMenu::askForBarrel);
    addEntry(tr("Browse a d&irectory of examples…"), "_proto_example_browser", &WindowMenu::askForDirectory);
    addSeparator();
    addEntry(tr("&New example"), "_create_example_bundle_editor", &WindowMenu::askNothing);
    addEntry(tr("Edit an &example…"), "_create_example_bundle_editor", &WindowMenu::askForExample);
    addEntry(tr("&Show the panes of a barrel…"), "_create_examples_bundle_editor", &WindowMenu::askForBarrel);
    addEntry(tr("New s&criptable bundle"), "_proto_scriptable_bundle_editor", &WindowMenu::askNothing);
    addEntry(tr("Edi&t a scriptable bundle…"), "_proto_scriptable_bundle_editor", &WindowMenu::askForScriptableBundle);
    addSeparator();
    addEntry(tr("&View the parts of a package…"), "_bundle_viewer", &WindowMenu::askForPackage);
    addEntry(tr("View parts and &relationships of a package…"), "_proto_package_browser", &WindowMenu::askForPackage);
}

void WindowMenu::addEntry(const QString& text, const char* function, Ask ask)
{
    QAction* entry = addAction(text, this, [this, function, ask] { (this->*ask)(function); });
    entry->setEnabled(Kelvaris::FunctionRegistry::instance().find(function) != nullptr);
}

void WindowMenu::askNothing(const std::string& function)
{
    Q_EMIT chosen({function, {}});
}

void WindowMenu::askForBarrelsAndPlace(const std::string& function)
{
    const QStringList barrels =
        QFileDialog::getOpenFileNames(parentWidget(), tr("Choose barrels of examples"), m_memory.directory(),
                                      tr("Barrels of examples (*.kvexs *.kvexs.zip);;All files (*)"));
    if (barrels.isEmpty())
        return;
    m_memory.addRecentFile(barrels.front());
    const QString place = directory(tr("Choose a directory for the new design"));
    if (!place.isEmpty())
        Q_EMIT chosen({function, {toTexts(barrels), {place.toStdString()}}});
}

void WindowMenu::askForBarrel(const std::string& function)
{
    chooseFile(function, tr("Choose a barrel of examples"),
               tr("Barrels of examples (*.kvexs *.kvexs.zip);;All files (*)"));
}

void WindowMenu::askForExample(const std::string& function)
{
    chooseFile(function, tr("Choose an example"), tr("Example bundles (*.kvbdl.zip *.zip);;All files (*)"));
}

void WindowMenu::askForScriptableBundle(const std::string& function)
{
    chooseFile(function, tr("Choose a scriptable bundle"), tr("Scriptable bundles (*.kvsbd.zip *.zip);;All files (*)"));
}

void WindowMenu::askForPackage(const std::string& function)
{
    chooseFile(function, tr("Choose a package"), tr("All files (*)"));
}

void WindowMenu::askForDirectory(const std::string& function)
{
    const QString chosenDirectory = directory(tr("Choose a directory with examples"));
    if (!chosenDirectory.isEmpty())
        Q_EMIT chosen({function, {{chosenDirectory.toStdString()}}});
}

void WindowMenu::chooseFile(const std::string& function, const QString& title, const QString& filter)
{
    const QString path = QFileDialog::getOpenFileName(parentWidget(), title, m_memory.directory(), filter);
    if (path.isEmpty())
        return;
    m_memory.addRecentFile(path);
    Q_EMIT chosen({function, {{path.toStdString()}}});
}

QString WindowMenu::directory(const QString& title)
{
    QString path =
        QFileDialog::getExistingDirectory(parentWidget(), title, m_memory.directory(), QFileDialog::ShowDirsOnly);
    if (!path.isEmpty())
        m_memory.setDirectory(path);
    return path;
}

} // namespace HostShell
