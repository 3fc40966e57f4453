#include "host/shell/text_checks.h"

#include "kelvaris/system/text_conversion.h"

namespace HostShell {

bool isValidUtf8(const std::string& text)
{
    using namespace Kelvaris::System;
    const auto* units = reinterpret_cast<const char8_t*>(text.data());
    return detail::_utf16LengthRequired(StringView2{units, text.size()}).hasValue();
}

std::optional<std::string> flawOf(const QString& text)
{
    if (text.contains(QChar{QChar::Null}))
        return "a NUL character";
    if (!text.isValidUtf16())
        return "half a surrogate pair";
    return std::nullopt;
}

} // namespace HostShell
