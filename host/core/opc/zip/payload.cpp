#include "host/core/opc/zip/payload.h"

#include "host/core/opc/zip/packed_data.h"

#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

Payload::Payload(ByteSourcePtr packed, Method method, std::uint32_t crc, std::uint64_t size) noexcept
    : m_packed{std::move(packed)}, m_size{size}, m_crc{crc}, m_method{method}
{
}

Payload::Payload(PackingJobPtr job) noexcept : m_job{std::move(job)}, m_size{m_job->size()} {}

Payload::~Payload() = default;

const ByteSourcePtr& Payload::packedBytes() const
{
    if (m_job == nullptr)
        return m_packed;
    PackedBytes result = m_job->result();
    m_method = result.method;
    m_crc = result.crc;
    m_packed = std::move(result.bytes);
    m_job.reset();
    return m_packed;
}

PackedData Payload::data(std::string_view subject) const
{
    return {.source = packed(),
            .offset = 0,
            .compressedSize = compressedSize(),
            .size = m_size,
            .crc = crc(),
            .method = method(),
            .subject = [subject] { return std::string{subject}; }};
}

Expected<std::vector<std::byte>, ErrorCode2> Payload::read(std::string_view subject) const
{
    return readPacked(data(subject));
}

Expected<void, ErrorCode2> Payload::stream(std::string_view subject, const Disk::ByteSink& sink) const
{
    return streamPacked(data(subject), sink);
}

Expected<ByteSourcePtr, ErrorCode2> Payload::openNested(std::string displayName) const
{
    const bool isInPlace = m_size > smallPackage || !packed().inMemory(0, compressedSize()).empty();
    if (method() == Method::stored && isInPlace)
        return windowSource(packedBytes(), 0, m_size, std::move(displayName));
    auto bytes = read(displayName);
    if (!bytes)
        return bytes.error();
    return memorySource(*std::move(bytes), std::move(displayName));
}

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
