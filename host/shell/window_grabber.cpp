#include "host/shell/window_grabber.h"

#include "host/shell/key_typing.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtGui/QPixmap>
#include <QtGui/QWindow>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <algorithm>

namespace HostShell {

namespace {

constexpr const char* picturedMark = "hollerwick_pictured";
constexpr const char* closedMark = "hollerwick_closed";

bool isOpenWindow(const QWidget* widget)
{
    return widget->isVisible() && widget->windowType() != Qt::ToolTip && widget->windowType() != Qt::Desktop;
}

QWidgetList openWindows()
{
    QWidgetList windows;
    const QWidgetList all = QApplication::topLevelWidgets();
    std::copy_if(all.begin(), all.end(), std::back_inserter(windows), isOpenWindow);
    return windows;
}

// Where a user's keys would go: no other window gets them while a menu or a modal dialog is open.
QWidget* activeWindow()
{
    for (QWidget* window :
         {QApplication::activePopupWidget(), QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        if (window != nullptr && window->isVisible())
            return window;
    }
    const QWidgetList windows = openWindows();
    return windows.isEmpty() ? nullptr : windows.last();
}

QString nameOf(const QWidget* window)
{
    if (!window->objectName().isEmpty())
        return window->objectName();
    return QString::fromLatin1(window->metaObject()->className()).section(QStringLiteral("::"), -1);
}

QString forFileName(QString text)
{
    constexpr int longest = 60;
    static const QRegularExpression others{QStringLiteral("[^\\w+.]+"), QRegularExpression::UseUnicodePropertiesOption};
    return text.replace(others, QStringLiteral("-")).left(longest);
}

bool isShownByTheScreen(const QWidget* window)
{
    return window->windowHandle() == nullptr || window->windowHandle()->isExposed();
}

bool isBusy(const QWidget* window)
{
    return window->property(busyMark).toBool();
}

// A shortcut presses a button, which does what it does only a moment later. (A button whose menu is open stays down.)
bool isAboutToClick(const QWidget* window)
{
    const auto buttons = window->findChildren<QAbstractButton*>();
    return QApplication::activePopupWidget() == nullptr &&
           std::any_of(buttons.begin(), buttons.end(), [](const QAbstractButton* button) { return button->isDown(); });
}

} // namespace

WindowGrabber::WindowGrabber(const QString& directory, std::vector<TypedKeys> keys, std::chrono::milliseconds patience)
    : m_directory{directory}, m_keys{std::make_move_iterator(keys.begin()), std::make_move_iterator(keys.end())},
      m_patience{patience}, m_deadline{patience}
{
    // a dialog of the desktop's own is no window of this process
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // a text cursor that blinks would be in one picture and not in the next
    QApplication::setCursorFlashTime(0);
    QCoreApplication::instance()->installEventFilter(this);
}

bool WindowGrabber::eventFilter(QObject* receiver, QEvent* event)
{
    if (receiver == this)
        return false;
    ++m_events;
    if (event->type() != QEvent::Show || !receiver->isWidgetType())
        return false;
    m_deadline.setRemainingTime(m_patience);
    lookLater();
    return false;
}

void WindowGrabber::lookLater()
{
    if (m_lookPosted)
        return;
    m_lookPosted = true;
    QMetaObject::invokeMethod(
        this, [this] { look(); }, Qt::QueuedConnection);
}

void WindowGrabber::look()
{
    m_lookPosted = false;
    if (openWindows().isEmpty())
        return;
    // before the step, which may end in a modal dialog's event loop: this look is the one that serves the dialog
    lookLater();
    if (settled())
        step();
}

bool WindowGrabber::settled()
{
    // a display may never show a window, and a window may never come to rest: neither is waited for without end
    if (!isQuiet() && !m_deadline.hasExpired())
        return false;
    m_deadline.setRemainingTime(m_patience);
    return true;
}

bool WindowGrabber::isQuiet()
{
    const bool quiet = m_events == std::exchange(m_eventsBefore, m_events);
    const QWidgetList windows = openWindows();
    return quiet && std::all_of(windows.begin(), windows.end(), isShownByTheScreen) &&
           std::none_of(windows.begin(), windows.end(), isBusy) &&
           std::none_of(windows.begin(), windows.end(), isAboutToClick);
}

void WindowGrabber::step()
{
    QWidget* window = activeWindow();
    if (window == nullptr)
        return;
    if (!m_typed.isNull())
        return save(window, std::exchange(m_typed, QString{}));
    if (takeFirstPicture())
        return;
    if (!m_keys.empty())
        return typeNext();
    close(window);
}

bool WindowGrabber::takeFirstPicture()
{
    for (QWidget* window : openWindows()) {
        if (window->property(picturedMark).toBool())
            continue;
        save(window, {});
        return true;
    }
    return false;
}

void WindowGrabber::typeNext()
{
    const TypedKeys keys = std::move(m_keys.front());
    m_keys.pop_front();
    m_typed = keys.name;
    for (const KeyPress& press : keys.presses) {
        if (QWidget* window = activeWindow())
            typeKey(*window, press);
    }
}

void WindowGrabber::save(QWidget* window, const QString& key)
{
    window->setProperty(picturedMark, true);
    QString name = QStringLiteral("%1-%2").arg(++m_pictures, 2, 10, QLatin1Char{'0'}).arg(nameOf(window));
    if (!key.isEmpty())
        name += QStringLiteral("-key-") + key;
    const QString path = m_directory.filePath(forFileName(name) + QStringLiteral(".png"));
    if (!window->grab().save(path) && m_failure.isEmpty())
        m_failure = QStringLiteral("cannot save the picture ") + path;
}

void WindowGrabber::close(QWidget* window)
{
    const bool refusedBefore = window->property(closedMark).toBool();
    window->setProperty(closedMark, true);
    if (!refusedBefore) {
        window->close();
        return;
    }
    // a window that asks before it closes has got "no" for an answer, since the question was closed like any window
    if (auto* dialog = qobject_cast<QDialog*>(window))
        return dialog->done(QDialog::Rejected);
    window->hide();
    // hiding the last window does not end the event loop as closing it would
    if (openWindows().isEmpty())
        QCoreApplication::exit();
}

} // namespace HostShell
