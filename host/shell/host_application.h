#pragma once

#include <QtCore/QTranslator>
#include <QtWidgets/QApplication>

#include <memory>

namespace HostShell {

/// Whether the environment names a display or a platform for windows.
bool displayIsNamed();

/// The application object of a program with windows.
///
/// What leaves an event handler is caught and logged under "ui"; the program goes on.
class HostApplication : public QApplication
{
public:
    /// Connects to the display. A display that cannot be reached ends the process with a sentence and status 2.
    static std::unique_ptr<HostApplication> connect();

    /// Deletes the windows that are left, so that no object of a plug-in outlives it.
    ~HostApplication() override;

    /// Runs the event loop until the last window is closed; does nothing when none is open.
    void runUntilWindowsAreClosed();

    bool notify(QObject* receiver, QEvent* event) override;

private:
    HostApplication();

    /// For the user's language: the build's "translations", or those that were installed with the program.
    void loadTranslations();

    QTranslator m_qtTranslator;
    QTranslator m_translator;
};

} // namespace HostShell
