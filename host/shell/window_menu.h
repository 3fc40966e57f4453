#pragma once

#include "host/shell/file_opening.h"

#include <QtWidgets/QMenu>

namespace HostShell {

class ConsoleMemory;

/// The menu that opens each window of the plug-in, with a file dialog ahead where the window shows a file.
class WindowMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param memory  outlives the menu
    WindowMenu(ConsoleMemory& memory, QWidget* parent);

Q_SIGNALS:
    void chosen(const HostShell::WindowCall& call);

private:
    /// Asks for what a window shows, and chooses it.
    using Ask = void (WindowMenu::*)(const std::string& function);

    void addEntry(const QString& text, const char* function, Ask ask);
    void askNothing(const std::string& function);
    void askForBarrelsAndPlace(const std::string& function);
    void askForBarrel(const std::string& function);
    void askForExample(const std::string& function);
    void askForScriptableBundle(const std::string& function);
    void askForPackage(const std::string& function);
    void askForDirectory(const std::string& function);

    void chooseFile(const std::string& function, const QString& title, const QString& filter);
    QString directory(const QString& title);

    ConsoleMemory& m_memory;
};

} // namespace HostShell
