#pragma once

#include "kelvaris/export.h"

namespace Kelvaris::System {

class String2;

/// One domain of error values. There is one object for each domain, and its address is its identity.
class KELVARIS_CORE_API ErrorCategory2
{
public:
    ErrorCategory2(const ErrorCategory2&) = delete;
    ErrorCategory2& operator=(const ErrorCategory2&) = delete;

    /// The domain in one word, NUL-terminated.
    virtual const char* name() const noexcept = 0;

    /// One sentence, without a full stop, for `value`. A value that the domain does not know has a sentence too.
    virtual String2 message(int value) const = 0;

protected:
    ErrorCategory2() = default;
    virtual ~ErrorCategory2();
};

/// 1: the user cancelled a dialog. See `CoreError`.
KELVARIS_CORE_API const ErrorCategory2& core_error_category();

/// Values of the operating system (`errno`, on Windows `GetLastError`); -1: a failure without a better description.
KELVARIS_CORE_API const ErrorCategory2& system_error_category();

/// Values of `std::errc`.
KELVARIS_CORE_API const ErrorCategory2& generic_error_category();

/// Values of `std::io_errc`.
KELVARIS_CORE_API const ErrorCategory2& iostream_error_category();

/// Values of `std::future_errc`.
KELVARIS_CORE_API const ErrorCategory2& future_error_category();

} // namespace Kelvaris::System
