#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/string_view2.h"

#include <cstddef>

namespace Kelvaris::System {

/// Wide text is UTF-16 where `wchar_t` has 16 bits and UTF-32 where it has 32, whatever a name here says.
///
/// @param text  NUL-terminated, not null
/// @return  core 5 when `text` is not valid Unicode
KELVARIS_CORE_API Expected<String2, ErrorCode2> utf16ToUtf8(const wchar_t* text);

namespace detail {

/// The number of wide code units that `text` takes, without a terminator.
/// @return  core 5 when `text` is not valid UTF-8
KELVARIS_CORE_API Expected<std::size_t, ErrorCode2> _utf16LengthRequired(const StringView2& text);

/// Writes `text` as `length` wide code units to `target`, without a terminator.
/// @param length  what `_utf16LengthRequired` gave for `text`
/// @return  core 5 when `text` is not valid UTF-8 or needs another length; `target` may be partly written then
KELVARIS_CORE_API Expected<void, ErrorCode2> _toUtf16(wchar_t* target, std::size_t length, const StringView2& text);

} // namespace detail

} // namespace Kelvaris::System
