#pragma once

#include "host/shell/typed_keys.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <chrono>
#include <deque>

class QWidget;

namespace HostShell {

/// A property of a window that is true while the window works at something that a picture must show.
inline constexpr const char* busyMark = "hollerwick_busy";

/// Takes a picture of every window that opens, types keys into the active one, and closes them all.
///
/// It works from inside the event loop, so that modal dialogs are served while the call that opened them waits. A step
/// is taken when the windows are on the screen and a round of the event loop has brought nothing new; no time is waited
/// for.
///
/// Pictures are named "01-ExampleBrowserDialog.png", "02-ExampleBrowserDialog-key-Tab.png": the step, the window's
/// object name (or its class), the key that was typed before.
class WindowGrabber : public QObject
{
public:
    /// @param directory  exists
    /// @param patience   after this time a step is taken although a window is still hidden or restless
    WindowGrabber(const QString& directory, std::vector<TypedKeys> keys,
                  std::chrono::milliseconds patience = std::chrono::seconds{10});

    /// The sentence for the first picture that could not be saved; empty when all were.
    const QString& failure() const noexcept { return m_failure; }

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void lookLater();
    void look();
    bool settled();
    bool isQuiet();
    void step();
    bool takeFirstPicture();
    void typeNext();
    void save(QWidget* window, const QString& key);
    void close(QWidget* window);

    QDir m_directory;
    std::deque<TypedKeys> m_keys;
    QString m_typed; ///< the keys whose picture is still to be taken
    QString m_failure;
    int m_pictures = 0;
    std::chrono::milliseconds m_patience;
    QDeadlineTimer m_deadline;
    quint64 m_events = 0;
    quint64 m_eventsBefore = 0;
    bool m_lookPosted = false;
};

} // namespace HostShell
