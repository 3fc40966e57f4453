#pragma once

#include "host/core/opc/zip/byte_source.h"
#include "host/core/opc/zip/entry.h"

#include <cstddef>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// The growth hint of an entry (ISO/IEC 29500-2, 9.2.7: extra field A220), which stays with its part whoever changes
/// the part (M1.16): the field as it stands in the local header, empty when there is none.
///
/// A hint that cannot be read is none: nothing depends on it.
std::vector<std::byte> growthHintOf(const Zip::ByteSource& source, const Zip::Entry& entry);

} // namespace Kelvaris::System::IO::OpcPackaging::detail
