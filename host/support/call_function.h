#pragma once

#include "host/support/function_registry.h"
#include "kelvaris/export.h"
#include "kelvaris/support/func_error.h"

#include <string>
#include <vector>

namespace Kelvaris {

/// What came out of one call.
struct CallResult
{
    FUNC_ERROR status = FUNC_OK;

    /// UTF-8; whatever was there when the call ended, after a failure too.
    std::vector<std::string> results;

    /// What the function posted to the message handler of the call.
    std::vector<std::string> messages;
};

/// Calls a script function.
///
/// @param arguments  UTF-8 texts; a single text is an array of one. Arguments may be left out at the end, down to the
///                   function's minimum; the function sees them with count 0.
/// @throws std::invalid_argument  with one sentence: the number of arguments is not what the function takes, or a text
///                                holds a NUL, which would cut it off there
KELVARIS_SUPPORT_API CallResult callFunction(const RegisteredFunction& function,
                                             const std::vector<std::vector<std::string>>& arguments);

} // namespace Kelvaris
