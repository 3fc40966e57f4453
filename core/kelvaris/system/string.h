#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/byte_array_view.h"
#include "kelvaris/system/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Kelvaris::System {

/// The older text class: a UTF-8 sequence of its own. Scripts and the logger use it; packages and bundles use
/// `String2`.
///
/// 8-bit text is taken as it comes and checked where it is converted: the bytes of a script's text come back unchanged.
class KELVARIS_CORE_API String : public Object
{
public:
    String() = default;

    /// @param text  NUL-terminated UTF-8, not null
    String(const char* text);
    String(const char8_t* text);
    String(const std::u8string& text);
    String(const std::string& text);

    /// @param text  UTF-16 where `wchar_t` has 16 bits, UTF-32 where it has 32
    /// @throws SystemError  with core 5 when `text` is not valid Unicode
    String(const std::wstring& text);

    String(const String&) = default;
    String(String&&) = default;
    String& operator=(const String&) = default;
    String& operator=(String&&) = default;
    ~String() override;

    /// Bytes, without any terminator.
    std::uint64_t size() const noexcept { return m_text.size(); }

    /// Exactly those bytes; valid as long as this object is unchanged.
    ByteArrayView byteView() const noexcept;

    /// NUL-terminated UTF-8; valid as long as this object is unchanged.
    const char8_t* c_str() const noexcept { return m_text.c_str(); }

    /// Valid as long as this object is unchanged.
    std::u8string_view toStdStringView() const noexcept { return m_text; }

    /// UTF-16 or UTF-32, by the size of `wchar_t`.
    /// @throws SystemError  with core 5 when the text is not valid UTF-8
    std::wstring toStdWString() const;

    /// The same bytes in a narrow string.
    std::string toLegacyUtf8() const;

    String& append(std::u8string_view text);

private:
    std::u8string m_text;
};

} // namespace Kelvaris::System
