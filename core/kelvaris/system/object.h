#pragma once

#include "kelvaris/export.h"

namespace Kelvaris::System {

/// Root of the host's older classes.
class KELVARIS_CORE_API Object
{
public:
    Object() = default;
    Object(const Object&) = default;
    Object(Object&&) = default;
    Object& operator=(const Object&) = default;
    Object& operator=(Object&&) = default;
    virtual ~Object();
};

} // namespace Kelvaris::System
