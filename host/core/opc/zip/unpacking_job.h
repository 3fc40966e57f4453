#pragma once

#include "host/core/opc/zip/archive.h"
#include "host/core/opc/zip/job.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// One entry's bytes, read already, that wait for being inflated and checked.
class KELVARIS_CORE_API UnpackingJob final : public Job
{
public:
    /// @param archive  outlives the job
    /// @param packed   of the archive's `readPacked` for this entry; a view of `buffer`, or of the archive's memory
    UnpackingJob(const Archive& archive, std::uint32_t entry, const PackedEntry& packed,
                 std::vector<std::byte> buffer) noexcept;
    ~UnpackingJob() override;

    /// How much memory it needs, with its result.
    std::uint64_t size() const noexcept { return m_packed.bytes.size() + m_packed.size; }

    /// The entry's bytes, once.
    /// @return  as `Archive::unpack`
    Expected<std::vector<std::byte>, ErrorCode2> takeResult();

private:
    void work(BlockDeflater& deflater) override;

    const Archive& m_archive;
    std::uint32_t m_entry;
    PackedEntry m_packed;
    std::vector<std::byte> m_buffer;
    Expected<std::vector<std::byte>, ErrorCode2> m_result;
};

using UnpackingJobPtr = std::shared_ptr<UnpackingJob>;

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
