#include "kelvaris/system/text_conversion.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/try_invoke.h"

#include <algorithm>

namespace Kelvaris::System {

Expected<String2, ErrorCode2> utf16ToUtf8(const wchar_t* text)
{
    return tryInvoke([text] { return Text::toString2(Text::toUtf8(text)); });
}

namespace detail {

namespace {

std::string_view narrow(const StringView2& text)
{
    return Text::narrow(std::u8string_view{text.data(), text.length()});
}

} // namespace

Expected<std::size_t, ErrorCode2> _utf16LengthRequired(const StringView2& text)
{
    return tryInvoke([&text] { return Text::toWide(narrow(text)).size(); });
}

Expected<void, ErrorCode2> _toUtf16(wchar_t* target, std::size_t length, const StringView2& text)
{
    return tryInvoke([&]() -> Expected<void, ErrorCode2> {
        const std::wstring wide = Text::toWide(narrow(text));
        if (wide.size() != length)
            return Errors::makeError(CoreError::invalidText, {}, "the wide text has another length");
        std::copy(wide.begin(), wide.end(), target);
        return {};
    });
}

} // namespace detail

} // namespace Kelvaris::System
