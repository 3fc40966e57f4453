#include "host/core/opc/zip/job.h"

#include <new>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

Job::~Job() = default;

bool Job::begin() noexcept
{
    State expected = State::waiting;
    return m_state.compare_exchange_strong(expected, State::running, std::memory_order_acquire);
}

void Job::end(State state) noexcept
{
    m_state.store(state, std::memory_order_release);
    m_state.notify_all();
}

void Job::run(BlockDeflater& deflater)
{
    try {
        work(deflater);
    } catch (...) {
        end(State::waiting);
        throw;
    }
    end(State::done);
}

void Job::runIfWaiting(BlockDeflater& deflater) noexcept
{
    if (!begin())
        return;
    try {
        run(deflater);
    } catch (const std::bad_alloc&) {
        // it waits again: who needs the result tries once more and hears of a failure
    }
}

void Job::finish(BlockDeflater& deflater)
{
    while (!isDone()) {
        if (begin())
            run(deflater);
        else
            m_state.wait(State::running, std::memory_order_acquire);
    }
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
