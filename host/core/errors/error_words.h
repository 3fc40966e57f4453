#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"

#include <string>

namespace Kelvaris::System::Errors {

/// The pieces of an error's message; those that are not known are empty.
struct ErrorWords
{
    std::string where; ///< the file, or "file: entry"
    std::string what;
    std::string why;
    std::string mend;
};

KELVARIS_CORE_API ErrorWords wordsOf(const ErrorCode2& error);

/// What somebody can do about an error of that kind; empty when there is nothing to say.
KELVARIS_CORE_API std::string adviceOn(const ErrorCode2& error);

/// The message without the advice: the reason of another error.
KELVARIS_CORE_API std::string reasonFrom(const ErrorCode2& error);

} // namespace Kelvaris::System::Errors
