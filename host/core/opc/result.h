#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

template <class T = void>
using Result = Expected<T, ErrorCode2>;

} // namespace Kelvaris::System::IO::OpcPackaging::detail
