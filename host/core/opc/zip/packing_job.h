#pragma once

#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/deflate.h"
#include "host/core/opc/zip/entry.h"
#include "kelvaris/export.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// What becomes of bytes that were taken in.
struct PackedBytes
{
    ByteSourcePtr bytes; ///< in memory
    Method method = Method::stored;
    std::uint32_t crc = 0;
};

/// Compresses; stores what does not shrink.
PackedBytes packBlock(std::span<const std::byte> bytes, Effort effort, BlockDeflater& deflater);

/// One file's bytes that wait for being compressed. Whoever comes first does it: a worker, or the thread that needs
/// the result.
class KELVARIS_CORE_API PackingJob
{
public:
    /// @param deflater  for use by the thread that needs the result
    PackingJob(std::unique_ptr<const std::byte[]> bytes, std::size_t size, Effort effort,
               std::shared_ptr<BlockDeflater> deflater) noexcept;
    PackingJob(const PackingJob&) = delete;
    PackingJob& operator=(const PackingJob&) = delete;
    ~PackingJob();

    std::size_t size() const noexcept { return m_size; }
    bool isDone() const noexcept { return m_state.load(std::memory_order_acquire) == State::done; }

    /// For workers: compresses, unless somebody else has begun. A worker without memory leaves the job to others.
    void runIfWaiting(BlockDeflater& deflater) noexcept;

    /// Compresses, or waits until whoever has begun is done.
    PackedBytes result();

private:
    enum class State : int { waiting, running, done };

    bool begin() noexcept;
    void end(State state) noexcept;
    void run(BlockDeflater& deflater);

    std::unique_ptr<const std::byte[]> m_bytes;
    std::size_t m_size;
    Effort m_effort;
    std::shared_ptr<BlockDeflater> m_deflater;
    PackedBytes m_result;
    std::atomic<State> m_state{State::waiting};
};

using PackingJobPtr = std::shared_ptr<PackingJob>;

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
