#include "kelvaris/system/error_code2.h"

#include "host/core/errors/error_words.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/string2.h"

namespace Kelvaris::System {

struct ErrorCode2::Context
{
    String2 subject;
    String2 reason;
};

ErrorCode2::ErrorCode2(int value, const ErrorCategory2& category) noexcept : m_value{value}, m_category{&category} {}

ErrorCode2::ErrorCode2(int value, const ErrorCategory2& category, const String2& subject, const String2& reason)
    : m_value{value}, m_category{&category}
{
    if (subject.length() > 0 || reason.length() > 0)
        m_context = std::make_shared<const Context>(Context{subject, reason});
}

ErrorCode2::ErrorCode2(const ErrorCode2&) noexcept = default;
ErrorCode2::ErrorCode2(ErrorCode2&&) noexcept = default;
ErrorCode2& ErrorCode2::operator=(const ErrorCode2&) noexcept = default;
ErrorCode2& ErrorCode2::operator=(ErrorCode2&&) noexcept = default;
ErrorCode2::~ErrorCode2() = default;

String2 ErrorCode2::message() const
{
    const String2 sentence = m_category->message(m_value);
    std::string text;
    if (m_context && m_context->subject.length() > 0)
        text.append(Text::narrow(m_context->subject)).append(": ");
    text += Text::narrow(sentence);
    if (m_context && m_context->reason.length() > 0)
        text.append(": ").append(Text::narrow(m_context->reason));
    if (const std::string advice = Errors::adviceOn(*this); !advice.empty())
        text.append("; ").append(advice);
    return Text::toString2(text);
}

namespace detail {

StringIntermediary::StringIntermediary(const ErrorCode2& code) : m_text{Text::narrow(code.message())} {}

} // namespace detail

} // namespace Kelvaris::System
