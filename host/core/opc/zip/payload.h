#pragma once

#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/entry.h"
#include "host/core/opc/zip/packing_job.h"
#include "host/core/paths/disk/byte_sink.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

struct PackedData;

/// The bytes of a new entry, taken in, and compressed at the latest when they are needed; to be written any number of
/// times.
///
/// Not for use by several threads at once.
class KELVARIS_CORE_API Payload
{
public:
    /// For `PayloadStore`.
    /// @param packed  nothing but the compressed bytes
    Payload(ByteSourcePtr packed, Method method, std::uint32_t crc, std::uint64_t size) noexcept;
    explicit Payload(PackingJobPtr job) noexcept;
    ~Payload();
    Payload(const Payload&) = delete;
    Payload& operator=(const Payload&) = delete;

    Method method() const { return packedBytes(), m_method; }
    std::uint32_t crc() const { return packedBytes(), m_crc; }
    std::uint64_t size() const noexcept { return m_size; }
    std::uint64_t compressedSize() const { return packed().size(); }

    /// The compressed bytes, as an entry holds them.
    const ByteSource& packed() const { return *packedBytes(); }

    /// The bytes that were taken in.
    /// @param subject  what they are, for messages
    /// @return  opc 23 when they are too many for memory, or the error of reading them back
    Expected<std::vector<std::byte>, ErrorCode2> read(std::string_view subject) const;

    /// The same in bounded memory.
    Expected<void, ErrorCode2> stream(std::string_view subject, const Disk::ByteSink& sink) const;

    /// The bytes as the source of an archive; without a copy when they are stored, but for a few that are not in
    /// memory.
    /// @param displayName  of the new source
    Expected<ByteSourcePtr, ErrorCode2> openNested(std::string displayName) const;

    /// Whether nobody waits for the compressed bytes any more.
    bool isPacked() const noexcept { return m_job == nullptr || m_job->isDone(); }

    /// For `PayloadStore`: where the compressed bytes are, and where the same bytes are from now on.
    const ByteSourcePtr& packedBytes() const;
    void moveTo(ByteSourcePtr packed) noexcept { m_packed = std::move(packed); }

private:
    PackedData data(std::string_view subject) const;

    mutable PackingJobPtr m_job; ///< until its result was needed
    mutable ByteSourcePtr m_packed;
    std::uint64_t m_size;
    mutable std::uint32_t m_crc = 0;
    mutable Method m_method = Method::stored;
};

using PayloadPtr = std::shared_ptr<const Payload>;

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
