#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/object.h"
#include "kelvaris/system/string.h"

#include <string>

namespace Kelvaris::System {

/// A unique identifier.
class KELVARIS_CORE_API UUID : public Object
{
public:
    /// A fresh identifier (RFC 4122, random), different from every other.
    UUID();
    ~UUID() override;

    /// 36 characters, lower case, without braces. Both forms are the same bytes.
    String toString() const;
    std::string toStdString() const;

private:
    std::string m_text;
};

} // namespace Kelvaris::System
