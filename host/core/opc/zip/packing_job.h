#pragma once

#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/entry.h"
#include "host/core/opc/zip/job.h"
#include "kelvaris/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// What becomes of bytes that were taken in.
struct PackedBytes
{
    ByteSourcePtr bytes; ///< in memory; null for `packBlock`'s caller, who has them, when they are stored
    Method method = Method::stored;
    std::uint32_t crc = 0;
};

/// Compresses; stores what does not shrink.
PackedBytes packBlock(std::span<const std::byte> bytes, Effort effort, BlockDeflater& deflater);

/// One file's bytes that wait for being compressed.
class KELVARIS_CORE_API PackingJob final : public Job
{
public:
    /// @param deflater  for use by the thread that needs the result
    PackingJob(std::unique_ptr<const std::byte[]> bytes, std::size_t size, Effort effort,
               std::shared_ptr<BlockDeflater> deflater) noexcept;
    ~PackingJob() override;

    std::size_t size() const noexcept { return m_size; }

    PackedBytes result();

private:
    void work(BlockDeflater& deflater) override;

    std::unique_ptr<const std::byte[]> m_bytes;
    std::size_t m_size;
    Effort m_effort;
    std::shared_ptr<BlockDeflater> m_deflater;
    PackedBytes m_result;
};

using PackingJobPtr = std::shared_ptr<PackingJob>;

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
