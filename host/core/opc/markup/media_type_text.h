#pragma once

#include "kelvaris/export.h"

#include <string>
#include <string_view>

/// Media types as text (RFC 2616, 3.7; M1.13 to M1.15, M1.22).
namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// What is wrong with `text` as a media type: white space around or inside (but around ";"), comments, anything but
/// type "/" subtype *(";" attribute "=" value). Empty when nothing is. The standard's own types take no parameters.
KELVARIS_CORE_API std::string mediaTypeFault(std::string_view text);

/// "text/html" for "text/html;charset=utf-8".
KELVARIS_CORE_API std::string_view mediaTypeEssence(std::string_view text) noexcept;

/// Whether two texts name one media type: type, subtype and names of parameters in any ASCII case, values as they
/// stand.
KELVARIS_CORE_API bool isSameMediaType(std::string_view left, std::string_view right) noexcept;

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
