#include "browsers/bundle_text.h"

#include "kelvaris/system/qt/text_bridge.h"

#include <span>

using namespace Kelvaris::System;

QString textOrEmpty(const Expected<String2, ErrorCode2>& text)
{
    return text ? utf8ToQString(*text).valueOr({}) : QString{};
}

QStringList textsOrEmpty(const Expected<StringVector2, ErrorCode2>& texts)
{
    QStringList result;
    if (!texts)
        return result;
    for (const String2& text : std::span{texts->data(), texts->size()})
        result += utf8ToQString(text).valueOr({});
    return result;
}
