#include "host/shell/line_feed.h"

#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <chrono>
#include <utility>

namespace HostShell {

namespace {

constexpr int handful = 2000;

// Between two flushes the event loop serves the user.
constexpr std::chrono::milliseconds pause{20};

} // namespace

LineFeed::LineFeed(Show show) : m_show{std::move(show)} {}

void LineFeed::add(const QString& line)
{
    const bool isOwnThread = QThread::currentThread() == thread();
    {
        std::unique_lock lock{m_mutex};
        if (!isOwnThread)
            m_taken.wait(lock, [this] { return m_closed || m_lines.size() < handful; });
        if (m_closed)
            return;
        m_lines.append(line);
        if (!isOwnThread && std::exchange(m_announced, true))
            return;
    }
    if (isOwnThread)
        flush();
    else
        QMetaObject::invokeMethod(this, &LineFeed::flushSoon, Qt::QueuedConnection);
}

void LineFeed::flushSoon()
{
    QTimer::singleShot(pause, this, &LineFeed::flush);
}

void LineFeed::flush()
{
    QStringList lines;
    {
        const std::lock_guard lock{m_mutex};
        lines.swap(m_lines);
        m_announced = false;
    }
    m_taken.notify_all();
    if (!lines.isEmpty())
        m_show(lines);
}

void LineFeed::close()
{
    const std::lock_guard lock{m_mutex};
    m_closed = true;
    m_taken.notify_all();
}

} // namespace HostShell
