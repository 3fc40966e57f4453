#include "host/shell/key_typing.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE
// The way in for keys of Qt's own test library, which declares it in the same manner.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers,
                                    const QString& text, bool isAutoRepeat, ushort count);
QT_END_NAMESPACE

namespace HostShell {

namespace {

// A display's driver makes the request for a menu of its key, beside the key itself.
void requestContextMenu(QWindow& window)
{
    QContextMenuEvent request{QContextMenuEvent::Keyboard, QPoint{}};
    QCoreApplication::sendEvent(&window, &request);
}

} // namespace

void typeKey(QWidget& window, const KeyPress& press)
{
    // without a window manager no window is ever made active, and keys would go nowhere
    if (QApplication::activeWindow() == nullptr)
        QApplication::setActiveWindow(&window);
    const QPointer<QWindow> target = window.windowHandle();
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        // the press may have closed the window
        if (target != nullptr)
            qt_handleKeyEvent(target, type, press.key, press.modifiers, press.text, false, 1);
    }
    if (target != nullptr && press.key == Qt::Key_Menu)
        requestContextMenu(*target);
}

} // namespace HostShell
