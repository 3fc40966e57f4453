#include "host/core/opc/part_read_ahead.h"

#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

/// Enough that no thread waits while the caller writes a file.
constexpr std::uint64_t memoryBudget = std::uint64_t{4} << 20;

} // namespace

Result<> PartReadAhead::next(const Disk::ByteSink& sink)
{
    readAhead();
    const PartPtr& part = m_order[m_next++];
    if (m_ahead.empty())
        return m_parts.stream(*part, sink);
    const Result<Zip::UnpackingJobPtr> job = std::move(m_ahead.front());
    m_ahead.pop_front();
    if (!job)
        return job.error();
    return *job == nullptr ? m_parts.stream(*part, sink) : streamFrom(**job, sink);
}

void PartReadAhead::readAhead()
{
    if (!m_workers.canHelp())
        return;
    while (m_next + m_ahead.size() < m_order.size() && m_memory < memoryBudget) {
        auto job = m_parts.items().readAhead(*m_order[m_next + m_ahead.size()]);
        if (job && *job != nullptr) {
            m_workers.add(*job);
            m_memory += (*job)->size();
        }
        m_ahead.push_back(std::move(job));
    }
}

Result<> PartReadAhead::streamFrom(Zip::UnpackingJob& job, const Disk::ByteSink& sink)
{
    // whoever waits for the thread that has this one in hand leaves the next ones to that thread
    while (!job.isDone() && m_workers.help(m_deflater)) {
    }
    const auto bytes = job.takeResult();
    m_memory -= job.size();
    if (!bytes)
        return bytes.error();
    return bytes->empty() ? Result<>{} : sink(*bytes);
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
