#include "host/core/opc/zip/unpacking_job.h"

#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

UnpackingJob::UnpackingJob(const Archive& archive, std::uint32_t entry, const PackedEntry& packed,
                           std::vector<std::byte> buffer) noexcept
    : m_archive{archive}, m_entry{entry}, m_packed{packed}, m_buffer{std::move(buffer)}, m_result{
                                                                                             std::vector<std::byte>{}}
{
}

UnpackingJob::~UnpackingJob() = default;

void UnpackingJob::work(BlockDeflater&)
{
    m_result = m_archive.unpack(m_entry, m_packed);
    m_buffer = {};
}

Expected<std::vector<std::byte>, ErrorCode2> UnpackingJob::takeResult()
{
    BlockDeflater unneeded;
    finish(unneeded);
    return std::move(m_result);
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
