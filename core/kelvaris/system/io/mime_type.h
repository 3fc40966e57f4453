#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/file_type.h"
#include "kelvaris/system/string2.h"

namespace Kelvaris::System::IO {

/// A media type (RFC 2616, 3.7).
class KELVARIS_CORE_API MIMEType
{
public:
    /// The media type under which a file of that kind is stored in a package; "application/octet-stream" for an unknown
    /// one.
    explicit MIMEType(FileType type);

    /// For the host's own use. The text is checked where it is used: when a part is made.
    explicit MIMEType(const String2& text);

    MIMEType(const MIMEType&) = default;
    MIMEType(MIMEType&&) noexcept = default;
    MIMEType& operator=(const MIMEType&) = default;
    MIMEType& operator=(MIMEType&&) noexcept = default;
    ~MIMEType();

    const String2& text() const noexcept { return m_text; }

private:
    String2 m_text;
};

} // namespace Kelvaris::System::IO
