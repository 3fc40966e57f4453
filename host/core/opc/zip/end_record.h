#pragma once

#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/records.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Where an archive's directory is, by its end records.
struct EndRecord
{
    std::uint64_t directoryOffset = 0; ///< in the source
    std::uint64_t directorySize = 0;
    std::uint64_t entries = 0;
    std::uint64_t prefix = 0; ///< bytes before the archive, which its offsets do not count
    std::uint64_t behind = 0; ///< bytes behind the archive
    std::string comment;
};

/// The last bytes of a source, read once: for most nested packages the end record and the directory are among them.
class SourceTail
{
public:
    explicit SourceTail(const ByteSource& source) noexcept : m_source{source}, m_begin{source.size()} {}

    /// Makes sure that the last `length` bytes, or all, are in memory.
    Expected<void, ErrorCode2> load(std::uint64_t length);

    Bytes bytes() const noexcept { return m_bytes; }
    std::uint64_t begin() const noexcept { return m_begin; }
    const ByteSource& source() const noexcept { return m_source; }

    /// Bytes of the source, out of memory where they are there.
    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const;

private:
    const ByteSource& m_source;
    std::vector<std::byte> m_buffer;
    Bytes m_bytes;
    std::uint64_t m_begin;
};

/// Finds and checks the end records. A comment, bytes behind it and bytes before the archive are no faults, as long as
/// they leave no doubt which archive is meant.
/// @return  opc 6, 7, 8 and 23 as `Archive::open`
Expected<EndRecord, ErrorCode2> readEndRecord(SourceTail& tail);

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
