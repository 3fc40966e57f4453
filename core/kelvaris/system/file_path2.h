#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"

#include <cstddef>
#include <string>

namespace Kelvaris::System {

/// A path of the file system, as wide text in the platform's own grammar: on Windows both separators and drives,
/// elsewhere "/".
///
/// Any text is a path until it is used: it reaches the disk as UTF-8 (UTF-16 on Windows), and an operation on a path
/// that has no such form, or that holds a NUL, answers an error.
class KELVARIS_CORE_API FilePath2
{
public:
    FilePath2() = default;

    /// @param length  in code units
    FilePath2(const wchar_t* text, std::size_t length);

    /// @param length  in bytes
    /// @throws SystemError  with core 5 when the text is not valid UTF-8
    FilePath2(const char8_t* text, std::size_t length);

    /// @throws SystemError  with core 5 when the text is not valid UTF-8
    FilePath2(const String2& text);

    FilePath2(const FilePath2&) = default;
    FilePath2(FilePath2&&) noexcept = default;
    FilePath2& operator=(const FilePath2&) = default;
    FilePath2& operator=(FilePath2&&) noexcept = default;
    ~FilePath2();

    /// Appends `component` behind a separator, which is the preferred one of the platform.
    ///
    /// Behind the empty path `component` stands as it is. Separators at the beginning of `component` are dropped:
    /// unlike `std::filesystem::path`, an absolute component never replaces what is there, so that nothing leaves a
    /// directory.
    FilePath2& operator/=(const FilePath2& component);

    /// The last component.
    /// @return  core 2 when there is none: the path is empty, or ends in a separator
    Expected<FilePath2, ErrorCode2> filename() const;

    /// NUL-terminated; valid as long as this object is unchanged.
    const wchar_t* c_str() const noexcept { return m_text.c_str(); }

    friend bool operator!=(const FilePath2& left, const FilePath2& right) noexcept
    {
        return left.m_text != right.m_text;
    }

private:
    std::wstring m_text;
};

} // namespace Kelvaris::System
