#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_category2.h"

#include <cstddef>
#include <future>
#include <ios>
#include <memory>
#include <string>
#include <system_error>

namespace Kelvaris::System {

class String2;

/// What went wrong: a value, the domain that gives it a meaning, and, where it is known, on what and why.
///
/// Copies are cheap: what a code says about its subject is shared.
class KELVARIS_CORE_API ErrorCode2
{
public:
    ErrorCode2(int value, const ErrorCategory2& category) noexcept;

    /// @param subject  what the failure is about: a path, "path: entry", a part name; may be empty
    /// @param reason   why, as the system or the rule that was broken puts it; may be empty
    ErrorCode2(int value, const ErrorCategory2& category, const String2& subject, const String2& reason);

    ErrorCode2(const ErrorCode2&) noexcept;
    ErrorCode2(ErrorCode2&&) noexcept;
    ErrorCode2& operator=(const ErrorCode2&) noexcept;
    ErrorCode2& operator=(ErrorCode2&&) noexcept;
    ~ErrorCode2();

    int value() const noexcept { return m_value; }
    const ErrorCategory2& category() const noexcept { return *m_category; }

    /// For people: "subject: the category's sentence: reason", without the pieces that are not known.
    String2 message() const;

    /// Equal codes have the same value in the same category, whatever they are about.
    friend bool operator==(const ErrorCode2& left, const ErrorCode2& right) noexcept
    {
        return left.m_value == right.m_value && left.m_category == right.m_category;
    }

private:
    struct Context;

    int m_value;
    const ErrorCategory2* m_category;
    std::shared_ptr<const Context> m_context;
};

/// Makes the code of a standard error enumerator, in the category that matches it.
template <class E>
struct ErrorCodeEnumConstructor;

template <>
struct ErrorCodeEnumConstructor<std::errc>
{
    ErrorCode2 operator()(std::errc value) const { return {static_cast<int>(value), generic_error_category()}; }
};

template <>
struct ErrorCodeEnumConstructor<std::io_errc>
{
    ErrorCode2 operator()(std::io_errc value) const { return {static_cast<int>(value), iostream_error_category()}; }
};

template <>
struct ErrorCodeEnumConstructor<std::future_errc>
{
    ErrorCode2 operator()(std::future_errc value) const { return {static_cast<int>(value), future_error_category()}; }
};

namespace detail {

/// The text of a code's message for as long as the object lives.
class KELVARIS_CORE_API StringIntermediary
{
public:
    explicit StringIntermediary(const ErrorCode2& code);

    /// NUL-terminated UTF-8.
    const char* data() const noexcept { return m_text.c_str(); }

    /// Bytes, without the terminator.
    std::size_t length() const noexcept { return m_text.size(); }

private:
    std::string m_text;
};

} // namespace detail

} // namespace Kelvaris::System
