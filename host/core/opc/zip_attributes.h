#pragma once

#include "host/core/opc/zip/entry.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// Whether an entry is a plain file by its name and by the attributes that its system gave it: directories, links,
/// devices and labels of disks are none (ISO/IEC 29500-2, M3.7).
bool isFile(const Zip::Entry& entry) noexcept;

} // namespace Kelvaris::System::IO::OpcPackaging::detail
