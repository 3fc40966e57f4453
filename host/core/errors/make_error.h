#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/bundle_error.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <string_view>

/// Error codes that say on what and why. `subject` and `reason` are UTF-8 and shown as they are; see `Text::displayed`.
namespace Kelvaris::System::Errors {

KELVARIS_CORE_API ErrorCode2 makeError(CoreError value, std::string_view subject, std::string_view reason = {});
KELVARIS_CORE_API ErrorCode2 makeError(IO::OpcPackaging::OpcError value, std::string_view subject,
                                       std::string_view reason = {});
KELVARIS_CORE_API ErrorCode2 makeError(IO::Bundle::BundleError value, std::string_view subject,
                                       std::string_view reason = {});

/// @param number  a value of `errno`
/// @param deed    what could not be done with the subject: "cannot be opened"
KELVARIS_CORE_API ErrorCode2 systemError(int number, std::string_view subject, std::string_view deed);

} // namespace Kelvaris::System::Errors
