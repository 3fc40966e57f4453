#pragma once

#include "kelvaris/system/exception2.h"

namespace Kelvaris::System {

/// A failure that the program could not foresee: of input, of the system, of a user.
class KELVARIS_EXPORT RuntimeError : public Exception2
{
public:
    using Exception2::Exception2;
};

} // namespace Kelvaris::System
