#pragma once

#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/entry.h"
#include "host/core/paths/disk/byte_sink.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// An entry's data as it stands in a source, and what must come out of it.
struct PackedData
{
    const ByteSource& source;
    std::uint64_t offset = 0;
    std::uint64_t compressedSize = 0;
    std::uint64_t size = 0;
    std::uint32_t crc = 0;
    Method method = Method::stored;
    std::function<std::string()> subject; ///< for messages, and made for them alone
};

/// All of it in memory, checked.
/// @return  opc 10, 11 and 23 as `Archive::read`, or the error of reading
Expected<std::vector<std::byte>, ErrorCode2> readPacked(const PackedData& data);

/// The same when the compressed bytes are in memory already; the source is not looked at.
Expected<std::vector<std::byte>, ErrorCode2> unpackBytes(const PackedData& data, std::span<const std::byte> compressed);

/// In bounded memory, checked at the end.
Expected<void, ErrorCode2> streamPacked(const PackedData& data, const Disk::ByteSink& sink);

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
