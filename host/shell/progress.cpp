#include "host/shell/progress.h"

#include "host/core/paths/disk/work.h"

#include <QtCore/QLocale>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace HostShell {

namespace {

namespace Work = Kelvaris::System::Disk::Work;

constexpr std::chrono::milliseconds usualPatience{700};
constexpr std::chrono::milliseconds betweenLines{100};
constexpr const char* eraseLine = "\r\033[K";

std::size_t columnsOfTerminal()
{
    winsize size{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return 80;
    return size.ws_col;
}

/// Nowhere when standard error is no terminal, or one that cannot take a line away: a file or another program wants
/// sentences only.
Progress::Place terminal()
{
    if (isatty(STDERR_FILENO) == 0 || qgetenv("TERM") == "dumb")
        return {};
    return {[](const std::string& text) { std::fputs(text.c_str(), stderr); }, columnsOfTerminal};
}

} // namespace

Progress::Progress(std::string label, std::uint64_t total, Counted counted)
    : Progress{std::move(label), total, counted, terminal(), usualPatience}
{
}

Progress::Progress(std::string label, std::uint64_t total, Counted counted, Place place,
                   std::chrono::milliseconds patience)
    : m_label{std::move(label)}, m_total{std::max<std::uint64_t>(total, 1)}, m_place{std::move(place)},
      m_next{std::chrono::steady_clock::now() + patience}
{
    if (!m_place.write)
        return;
    // what the log has to say stands on lines of its own
    m_tap.emplace([this](const Kelvaris::System::Logging::LogLine&) { hide(); });
    const auto count = [counted](const Work::Moved& moved) {
        return counted == Counted::read ? moved.read : moved.written;
    };
    Work::setObserver(
        [this, count, begin = count(Work::moved())](const Work::Moved& moved) { show(count(moved) - begin); });
}

Progress::~Progress()
{
    if (!m_place.write)
        return;
    Work::setObserver({});
    hide();
}

void Progress::hide()
{
    if (m_shownPercent >= 0)
        m_place.write(eraseLine);
    m_shownPercent = -1;
}

void Progress::show(std::uint64_t moved)
{
    const auto now = std::chrono::steady_clock::now();
    const int percent = static_cast<int>(std::min(moved, m_total) * 100.0 / m_total);
    if (now < m_next || percent == m_shownPercent)
        return;
    m_next = now + betweenLines;
    m_shownPercent = percent;
    m_place.write(eraseLine + fittingLine(percent));
}

std::string Progress::fittingLine(int percent) const
{
    std::string done = std::to_string(percent) + " %";
    const std::size_t columns = m_place.columns();
    for (const std::string& line : {m_label + " " + done + " of " + sizeInWords(m_total), m_label + " " + done}) {
        // one column stays free: some terminals break a line that ends in the last one
        if (line.size() < columns)
            return line;
    }
    return done;
}

std::string sizeInWords(std::uint64_t bytes)
{
    return QLocale::c()
        .formattedDataSize(static_cast<qint64>(bytes), bytes < 1000 ? 0 : 1, QLocale::DataSizeSIFormat)
        .toStdString();
}

} // namespace HostShell
