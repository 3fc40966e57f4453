#pragma once

namespace Kelvaris {

/// What the entry function of a script function answers to the host.
enum FUNC_ERROR : int {
    FUNC_OK = 0,     ///< the call has completed; the results tell the rest
    FUNC_FAILED = 1, ///< the call ended in an exception; the log tells why
};

} // namespace Kelvaris
