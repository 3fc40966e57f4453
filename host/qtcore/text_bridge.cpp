#include "kelvaris/system/qt/text_bridge.h"

#include "kelvaris/system/core_error.h"
#include "kelvaris/system/try_invoke.h"

#include <utf8.h>

#include <iterator>
#include <string>

namespace Kelvaris::System {

namespace {

ErrorCode2 invalidText(const std::string& reason)
{
    String2 text;
    text.assign(reinterpret_cast<const char8_t*>(reason.data()), reason.size());
    return {static_cast<int>(CoreError::invalidText), core_error_category(), {}, text};
}

} // namespace

// Qt's own conversions put "?" or U+FFFD in the place of what is invalid, and drop a byte order mark, which is a
// character like others inside a text of ours.

Expected<String2, ErrorCode2> qStringToUTF8(const QString& text)
{
    return tryInvoke([&]() -> Expected<String2, ErrorCode2> {
        std::string utf8Text;
        utf8Text.reserve(static_cast<std::size_t>(text.size()));
        try {
            utf8::utf16to8(text.utf16(), text.utf16() + text.size(), std::back_inserter(utf8Text));
        } catch (const utf8::exception&) {
            return invalidText("half a surrogate pair behind " + std::to_string(utf8Text.size()) + " valid bytes");
        }
        String2 converted;
        converted.assign(reinterpret_cast<const char8_t*>(utf8Text.data()), utf8Text.size());
        return converted;
    });
}

Expected<QString, ErrorCode2> utf8ToQString(const String2& text)
{
    return tryInvoke([&]() -> Expected<QString, ErrorCode2> {
        const char8_t* const end = text.data() + text.length();
        const char8_t* const invalid = utf8::find_invalid(text.data(), end);
        if (invalid != end)
            return invalidText("byte " + std::to_string(invalid - text.data() + 1) + " begins no UTF-8 character");
        // no character takes more units of UTF-16 than bytes of UTF-8
        QString converted{static_cast<int>(text.length()), Qt::Uninitialized};
        QChar* const begin = converted.data();
        converted.resize(static_cast<int>(utf8::unchecked::utf8to16(text.data(), end, begin) - begin));
        return converted;
    });
}

} // namespace Kelvaris::System
