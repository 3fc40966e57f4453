#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <string>

namespace Kelvaris::System {

class StringVector2;

/// The newer text class: a UTF-8 sequence. Every operation of packages and bundles takes and gives it.
class KELVARIS_CORE_API String2
{
public:
    String2() = default;

    /// @param text  NUL-terminated UTF-8, not null
    String2(const char8_t* text);

    String2(const String2&) = default;
    String2(String2&&) noexcept = default;
    String2& operator=(const String2&) = default;
    String2& operator=(String2&&) noexcept = default;
    ~String2();

    /// Replaces the text with `length` bytes of UTF-8 at `text`; NUL bytes among them stay.
    String2& assign(const char8_t* text, std::size_t length);

    /// NUL-terminated; valid as long as this object is unchanged.
    const char8_t* data() const noexcept { return m_text.c_str(); }

    /// Bytes, without the terminator.
    std::size_t length() const noexcept { return m_text.size(); }

    /// The pieces between separators. Blanks around a piece are dropped, and so are empty pieces: the text
    /// "alpha; beta gamma;" gives "alpha" and "beta gamma".
    /// @return  generic ENOMEM when there is no room
    Expected<StringVector2, ErrorCode2> split(char8_t separator) const;

    friend bool operator==(const String2&, const String2&) = default;

private:
    std::u8string m_text;
};

} // namespace Kelvaris::System
