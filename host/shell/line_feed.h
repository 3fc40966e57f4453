#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace HostShell {

/// Carries lines from any thread to a pane, many at a time: a script that prints without end neither floods the event
/// loop of the window nor its memory.
///
/// Lines of one thread keep their order. Those of the feed's own thread are shown at once.
class LineFeed : public QObject
{
public:
    using Show = std::function<void(const QStringList& lines)>;

    /// @param show  is called on the thread that the feed lives on
    explicit LineFeed(Show show);

    /// From any thread. Other threads than the feed's own wait while it has its hands full.
    void add(const QString& line);

    /// Shows what is there.
    void flush();

    /// From now on no thread waits, and what comes is dropped.
    void close();

private:
    void flushSoon();

    Show m_show;
    std::mutex m_mutex;
    std::condition_variable m_taken;
    QStringList m_lines;
    bool m_announced = false; ///< a flush is on its way
    bool m_closed = false;
};

} // namespace HostShell
