#include "host/core/opc/zip/packing_job.h"

#include <libdeflate.h>

#include <utility>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

PackedBytes packBlock(std::span<const std::byte> bytes, Effort effort, BlockDeflater& deflater)
{
    const std::uint32_t crc = libdeflate_crc32(0, bytes.data(), bytes.size());
    std::vector<std::byte> compressed = deflater.deflate(bytes, effort);
    if (!compressed.empty())
        return {memorySource(std::move(compressed), {}), Method::deflated, crc};
    return {nullptr, Method::stored, crc};
}

PackingJob::PackingJob(std::unique_ptr<const std::byte[]> bytes, std::size_t size, Effort effort,
                       std::shared_ptr<BlockDeflater> deflater) noexcept
    : m_bytes{std::move(bytes)}, m_size{size}, m_effort{effort}, m_deflater{std::move(deflater)}
{
}

PackingJob::~PackingJob() = default;

void PackingJob::work(BlockDeflater& deflater)
{
    const std::span bytes{m_bytes.get(), m_size};
    PackedBytes packed = packBlock(bytes, m_effort, deflater);
    if (packed.bytes == nullptr)
        packed.bytes = memorySource({bytes.begin(), bytes.end()}, {});
    m_result = std::move(packed);
    m_bytes.reset();
}

PackedBytes PackingJob::result()
{
    finish(*m_deflater);
    return m_result;
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
