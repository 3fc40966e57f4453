#pragma once

#include "host/core/opc/zip/job.h"

#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Threads that compress while their owner reads the next file, or inflate while it writes the last one. They begin
/// with the jobs and end with them: where nothing waits, nothing runs.
///
/// One thread at a time owns the object; what it adds is taken by as many threads as the machine has processors,
/// the owner's own among them.
class KELVARIS_CORE_API Workers
{
public:
    /// Fewer bytes are compressed or inflated in the time that handing them over takes.
    static constexpr std::size_t worthHandingOver = std::size_t{2} << 10;

    Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// As `finish`.
    ~Workers();

    /// Whether there is a processor besides the one that the owner has.
    bool canHelp() const noexcept { return m_limit > 0; }

    /// Another limit than the machine's; for tests.
    void setLimit(unsigned threads) noexcept { m_limit = threads; }

    void add(const JobPtr& job);

    /// For the owner, instead of waiting for a thread: does the next job that nobody has begun.
    /// @param deflater  the owner's
    /// @return  whether there was one
    bool help(BlockDeflater& deflater) noexcept;

    /// No thread runs afterwards. What waits still is done where its result is needed.
    void finish() noexcept;

private:
    void startWorker();
    void work() noexcept;
    JobPtr next() noexcept;
    JobPtr takeWaiting() noexcept;

    unsigned m_limit;
    std::mutex m_mutex; ///< of the next two
    std::deque<JobPtr> m_waiting;
    unsigned m_running = 0;
    std::vector<std::jthread> m_threads; ///< those that run, and those that have ended since
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
