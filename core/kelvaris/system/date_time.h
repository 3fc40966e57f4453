#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"

namespace Kelvaris::System {

/// A time stamp, kept in the words in which it was read: fraction and time zone survive a save.
class KELVARIS_CORE_API DateTime
{
public:
    /// No time.
    DateTime() = default;
    DateTime(const DateTime&) = default;
    DateTime(DateTime&&) noexcept = default;
    DateTime& operator=(const DateTime&) = default;
    DateTime& operator=(DateTime&&) noexcept = default;
    ~DateTime();

    /// Reads "2026-03-01T12:30:00.5+01:00" (XML Schema 1.0, dateTime: fraction and zone may be missing), the shorter
    /// forms that core properties may hold as well (W3CDTF: a year, a month, a day, a time without seconds), and the
    /// empty text, which is no time. White space around it does not count.
    ///
    /// @return  core 4 when the text is none of these, or names a day or an hour that does not exist
    static Expected<DateTime, ErrorCode2> fromXSDDateTime(const String2& text);

    /// What was read; the empty text for no time.
    Expected<String2, ErrorCode2> toXSDDateTime() const;

    friend bool operator==(const DateTime&, const DateTime&) = default;

private:
    String2 m_text;
};

} // namespace Kelvaris::System
