#include "host/shell/host_application.h"

#include "host/shell/colour_scheme.h"
#include "host/shell/log_output.h"
#include "host/shell/plugin_library.h"
#include "host/shell/program_words.h"
#include "kelvaris/system/application.h"
#include "kelvaris/system/bad_expected_access.h"

#include <QtCore/QDebug>
#include <QtCore/QEvent>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QPointer>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace HostShell {

namespace {

using namespace Kelvaris::System;

/// Without memory for the line there is none.
void logCaughtException() noexcept
try {
    auto& logger = Application::instance()->logger();
    try {
        throw;
    } catch (const bad_expected_access<ErrorCode2>& failure) {
        logger.error("ui", failure.error());
    } catch (const std::exception& failure) {
        logger.error("ui", failure.what());
    } catch (...) {
        logger.error("ui", "unknown error");
    }
} catch (const std::exception&) {
    return;
}

// What Qt says while it connects to the display: the first warning is the reason when it fails, and then nobody needs
// the others.
QStringList connectionWarnings;

// Qt ends the process with SIGABRT when it cannot reach the display; until it has, a fatal message means just that.
void holdWarnings(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtFatalMsg)
        return connectionWarnings.append(message.simplified());
    const QString reason = connectionWarnings.value(0, message.simplified());
    complain("cannot open windows on this display: " + reason.toStdString());
    std::_Exit(2);
}

bool anyWindowIsOpen()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) { return window->isVisible(); });
}

} // namespace

bool displayIsNamed()
{
    const auto names = {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"};
    return std::any_of(names.begin(), names.end(), [](auto name) { return !qEnvironmentVariableIsEmpty(name); });
}

std::unique_ptr<HostApplication> HostApplication::connect()
{
    // sharp on every screen, whatever its scale
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QtMessageHandler logHandler = qInstallMessageHandler(holdWarnings);
    std::unique_ptr<HostApplication> application{new HostApplication};
    qInstallMessageHandler(logHandler);
    for (const QString& warning : std::exchange(connectionWarnings, {}))
        qWarning().noquote() << warning;
    return application;
}

HostApplication::HostApplication() : QApplication{programWordCount, programWords}
{
    setApplicationName(QStringLiteral("hollerwick-host"));
    // by these a desktop knows whose windows they are; without an installed icon they have the desktop's own
    setDesktopFileName(QStringLiteral("org.hollerwick.hollerwick"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("hollerwick")));
    applyColourScheme(*this);
    loadTranslations();
}

HostApplication::~HostApplication()
{
    for (const QPointer<QWidget> window : topLevelWidgets()) {
        // deleting one window may have taken others with it
        if (window != nullptr && window->parent() == nullptr)
            delete window.data();
    }
    sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void HostApplication::loadTranslations()
{
    // Qt's own texts, where the system has them
    const QString ofQt = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    if (m_qtTranslator.load(QLocale{}, QStringLiteral("qtbase"), QStringLiteral("_"), ofQt))
        installTranslator(&m_qtTranslator);
    for (const char* place : {"/../translations", "/../share/hollerwick/translations"}) {
        const QString directory = programDirectory() + QString::fromLatin1(place);
        if (!m_translator.load(QLocale{}, QStringLiteral("hollerwick"), QStringLiteral("_"), directory))
            continue;
        installTranslator(&m_translator);
        return;
    }
}

void HostApplication::runUntilWindowsAreClosed()
{
    if (anyWindowIsOpen())
        exec();
}

bool HostApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        logCaughtException();
        return true;
    }
}

} // namespace HostShell
