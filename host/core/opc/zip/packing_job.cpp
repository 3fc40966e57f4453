#include "host/core/opc/zip/packing_job.h"

#include <libdeflate.h>

#include <new>
#include <utility>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

PackedBytes packBlock(std::span<const std::byte> bytes, Effort effort, BlockDeflater& deflater)
{
    const std::uint32_t crc = libdeflate_crc32(0, bytes.data(), bytes.size());
    std::vector<std::byte> compressed = deflater.deflate(bytes, effort);
    if (!compressed.empty())
        return {memorySource(std::move(compressed), {}), Method::deflated, crc};
    return {memorySource({bytes.begin(), bytes.end()}, {}), Method::stored, crc};
}

PackingJob::PackingJob(std::unique_ptr<const std::byte[]> bytes, std::size_t size, Effort effort,
                       std::shared_ptr<BlockDeflater> deflater) noexcept
    : m_bytes{std::move(bytes)}, m_size{size}, m_effort{effort}, m_deflater{std::move(deflater)}
{
}

PackingJob::~PackingJob() = default;

bool PackingJob::begin() noexcept
{
    State expected = State::waiting;
    return m_state.compare_exchange_strong(expected, State::running, std::memory_order_acquire);
}

void PackingJob::end(State state) noexcept
{
    m_state.store(state, std::memory_order_release);
    m_state.notify_all();
}

void PackingJob::run(BlockDeflater& deflater)
{
    try {
        m_result = packBlock({m_bytes.get(), m_size}, m_effort, deflater);
    } catch (...) {
        end(State::waiting);
        throw;
    }
    m_bytes.reset();
    end(State::done);
}

void PackingJob::runIfWaiting(BlockDeflater& deflater) noexcept
{
    if (!begin())
        return;
    try {
        run(deflater);
    } catch (const std::bad_alloc&) {
        // it waits again: who needs the result tries once more and hears of a failure
    }
}

PackedBytes PackingJob::result()
{
    while (!isDone()) {
        if (begin())
            run(*m_deflater);
        else
            m_state.wait(State::running, std::memory_order_acquire);
    }
    return m_result;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
