#include "host/core/opc/zip/workers.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

namespace {

/// Beyond these, reading the files is what takes the time.
constexpr unsigned maximumThreads = 8;

/// A single job is not worth a thread: its owner needs it next.
constexpr std::size_t worthAThread = 2;

void runIfWanted(const JobPtr& job, BlockDeflater& deflater) noexcept
{
    // a job that nobody else holds is one whose result nobody wants
    if (job.use_count() > 1)
        job->runIfWaiting(deflater);
}

} // namespace

Workers::Workers() : m_limit{std::clamp(std::thread::hardware_concurrency(), 1U, maximumThreads) - 1} {}

Workers::~Workers()
{
    finish();
}

void Workers::add(const JobPtr& job)
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

void Workers::startWorker()
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

JobPtr Workers::takeWaiting() noexcept
{
    if (m_waiting.empty())
        return nullptr;
    JobPtr job = std::move(m_waiting.front());
    m_waiting.pop_front();
    return job;
}

JobPtr Workers::next() noexcept
{
    const std::lock_guard lock{m_mutex};
    JobPtr job = takeWaiting();
    if (job == nullptr)
        --m_running;
    return job;
}

bool Workers::help(BlockDeflater& deflater) noexcept
{
    std::unique_lock lock{m_mutex};
    const JobPtr job = takeWaiting();
    lock.unlock();
    if (job != nullptr)
        runIfWanted(job, deflater);
    return job != nullptr;
}

void Workers::work() noexcept
{
    BlockDeflater deflater;
    while (const JobPtr job = next())
        runIfWanted(job, deflater);
}

void Workers::finish() noexcept
{
    {
        const std::lock_guard lock{m_mutex};
        m_waiting.clear();
    }
    m_threads.clear();
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
