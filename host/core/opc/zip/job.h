#pragma once

#include "host/core/opc/zip/deflate.h"
#include "kelvaris/export.h"

#include <atomic>
#include <memory>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Work that waits. Whoever comes first does it: a worker, or the thread that needs the result.
class KELVARIS_CORE_API Job
{
public:
    Job() = default;
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;
    virtual ~Job();

    bool isDone() const noexcept { return m_state.load(std::memory_order_acquire) == State::done; }

    /// For workers: does it, unless somebody else has begun. A worker without memory leaves the job to others.
    /// @param deflater  the worker's own
    void runIfWaiting(BlockDeflater& deflater) noexcept;

protected:
    /// Does it, or waits until whoever has begun is done.
    void finish(BlockDeflater& deflater);

private:
    enum class State : int { waiting, running, done };

    /// Leaves everything as it was when it throws.
    virtual void work(BlockDeflater& deflater) = 0;

    bool begin() noexcept;
    void end(State state) noexcept;
    void run(BlockDeflater& deflater);

    std::atomic<State> m_state{State::waiting};
};

using JobPtr = std::shared_ptr<Job>;

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
