#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <functional>
#include <span>

namespace Kelvaris::System::Disk {

/// Takes bytes piece by piece, in order. Its first error ends the transfer and is the transfer's own.
using ByteSink = std::function<Expected<void, ErrorCode2>(std::span<const std::byte>)>;

} // namespace Kelvaris::System::Disk
