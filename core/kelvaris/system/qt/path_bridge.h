#pragma once

#include "kelvaris/system/file_path2.h"

#include <QtCore/QString>

#include <string>

namespace Kelvaris::System {

/// The path whose text is `text`. Any text makes a path; what the platform cannot hold is refused when it is used.
inline FilePath2 toFilePath2(const QString& text)
{
    std::wstring wide;
    for (int i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (sizeof(wchar_t) > sizeof(QChar) && isPair)
            wide += static_cast<wchar_t>(QChar::surrogateToUcs4(unit, text[++i]));
        else // half a pair stays, too, so that it is refused: Qt would put another character in its place
            wide += static_cast<wchar_t>(unit.unicode());
    }
    return {wide.data(), wide.size()};
}

/// The path's text, in the separators that it has.
inline QString toQString(const FilePath2& path)
{
    return QString::fromWCharArray(path.c_str());
}

} // namespace Kelvaris::System
