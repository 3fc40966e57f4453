#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <string>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::Markup {

/// A piece of a file for a sentence: in quotes, without what breaks a line, and cut when it is very long.
KELVARIS_CORE_API std::string inQuotes(std::string_view text);

/// "ISO/IEC 29500-2 M1.26: the id 'rId1' stands twice".
KELVARIS_CORE_API std::string ruleReason(std::string_view rule, std::string_view what);

/// The error of a broken rule, on `subject`.
KELVARIS_CORE_API ErrorCode2 ruleError(OpcError error, std::string_view subject, std::string_view rule,
                                       std::string_view what);

} // namespace Kelvaris::System::IO::OpcPackaging::Markup
