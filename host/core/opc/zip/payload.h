#pragma once

#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/entry.h"
#include "host/core/paths/disk/byte_sink.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

struct PackedData;

/// The bytes of a new entry, taken in, compressed and ready to be written any number of times.
class KELVARIS_CORE_API Payload
{
public:
    /// For `PayloadStore`.
    /// @param packed  nothing but the compressed bytes
    Payload(ByteSourcePtr packed, Method method, std::uint32_t crc, std::uint64_t size) noexcept;
    ~Payload();
    Payload(const Payload&) = delete;
    Payload& operator=(const Payload&) = delete;

    Method method() const noexcept { return m_method; }
    std::uint32_t crc() const noexcept { return m_crc; }
    std::uint64_t size() const noexcept { return m_size; }
    std::uint64_t compressedSize() const noexcept { return m_packed->size(); }

    /// The compressed bytes, as an entry holds them.
    const ByteSource& packed() const noexcept { return *m_packed; }

    /// The bytes that were taken in.
    /// @param subject  what they are, for messages
    /// @return  opc 23 when they are too many for memory, or the error of reading them back
    Expected<std::vector<std::byte>, ErrorCode2> read(std::string_view subject) const;

    /// The same in bounded memory.
    Expected<void, ErrorCode2> stream(std::string_view subject, const Disk::ByteSink& sink) const;

    /// The bytes as the source of an archive; without a copy when they are stored.
    /// @param displayName  of the new source
    Expected<ByteSourcePtr, ErrorCode2> openNested(std::string displayName) const;

private:
    PackedData data(std::string_view subject) const;

    ByteSourcePtr m_packed;
    std::uint64_t m_size;
    std::uint32_t m_crc;
    Method m_method;
};

using PayloadPtr = std::shared_ptr<const Payload>;

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
