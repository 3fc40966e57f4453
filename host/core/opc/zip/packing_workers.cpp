#include "host/core/opc/zip/packing_workers.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

/// Beyond these, reading the files is what takes the time.
constexpr unsigned maximumThreads = 8;

/// A single job is not worth a thread: its owner needs it next.
constexpr std::size_t worthAThread = 2;

void runIfWanted(const PackingJobPtr& job, BlockDeflater& deflater) noexcept
{
    // a job that nobody else holds is one whose result nobody wants
    if (job.use_count() > 1)
        job->runIfWaiting(deflater);
}

} // namespace

PackingWorkers::PackingWorkers() : m_limit{std::clamp(std::thread::hardware_concurrency(), 1U, maximumThreads) - 1} {}

PackingWorkers::~PackingWorkers()
{
    finish();
}

void PackingWorkers::add(const PackingJobPtr& job)
{
    bool isWorker = false;
    {
        const std::lock_guard lock{m_mutex};
        m_waiting.push_back(job);
        isWorker = m_running < m_limit && m_waiting.size() >= worthAThread;
    }
    if (isWorker)
        startWorker();
}

void PackingWorkers::startWorker()
{
    std::unique_lock lock{m_mutex};
    const bool isFirst = m_running++ == 0;
    lock.unlock();
    try {
        if (isFirst)
            m_threads.clear(); // joins those that have ended
        m_threads.emplace_back([this] { work(); });
    } catch (const std::exception&) {
        lock.lock();
        --m_running; // no thread to be had: the jobs are done where their results are needed
    }
}

PackingJobPtr PackingWorkers::takeWaiting() noexcept
{
    if (m_waiting.empty())
        return nullptr;
    PackingJobPtr job = std::move(m_waiting.front());
    m_waiting.pop_front();
    return job;
}

PackingJobPtr PackingWorkers::next() noexcept
{
    const std::lock_guard lock{m_mutex};
    PackingJobPtr job = takeWaiting();
    if (job == nullptr)
        --m_running;
    return job;
}

bool PackingWorkers::help(BlockDeflater& deflater) noexcept
{
    std::unique_lock lock{m_mutex};
    const PackingJobPtr job = takeWaiting();
    lock.unlock();
    if (job != nullptr)
        runIfWanted(job, deflater);
    return job != nullptr;
}

void PackingWorkers::work() noexcept
{
    BlockDeflater deflater;
    while (const PackingJobPtr job = next())
        runIfWanted(job, deflater);
}

void PackingWorkers::finish() noexcept
{
    {
        const std::lock_guard lock{m_mutex};
        m_waiting.clear();
    }
    m_threads.clear();
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
