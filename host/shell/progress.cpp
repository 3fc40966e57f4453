#include "host/shell/progress.h"

#include "host/core/paths/disk/work.h"

#include <QtCore/QLocale>

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

/// Nowhere when standard error is no terminal: a file or another program wants sentences only.
Progress::Write terminal()
{
    if (isatty(STDERR_FILENO) == 0)
        return {};
    return [](const std::string& text) { std::fputs(text.c_str(), stderr); };
}

} // namespace

Progress::Progress(std::string label, std::uint64_t total, Counted counted)
    : Progress{std::move(label), total, counted, terminal(), usualPatience}
{
}

Progress::Progress(std::string label, std::uint64_t total, Counted counted, Write write,
                   std::chrono::milliseconds patience)
    : m_label{std::move(label)}, m_total{std::max<std::uint64_t>(total, 1)}, m_write{std::move(write)},
      m_next{std::chrono::steady_clock::now() + patience}
{
    if (!m_write)
        return;
    const auto count = [counted](const Work::Moved& moved) {
        return counted == Counted::read ? moved.read : moved.written;
    };
    Work::setObserver(
        [this, count, begin = count(Work::moved())](const Work::Moved& moved) { show(count(moved) - begin); });
}

Progress::~Progress()
{
    if (!m_write)
        return;
    Work::setObserver({});
    hide();
}

void Progress::hide()
{
    if (m_shownPercent >= 0)
        m_write(eraseLine);
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
    m_write(eraseLine + m_label + " " + std::to_string(percent) + " % of " + sizeInWords(m_total));
}

std::string sizeInWords(std::uint64_t bytes)
{
    return QLocale::c()
        .formattedDataSize(static_cast<qint64>(bytes), bytes < 1000 ? 0 : 1, QLocale::DataSizeSIFormat)
        .toStdString();
}

} // namespace HostShell
