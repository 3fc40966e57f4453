#pragma once

#include "kelvaris/system/file_path2.h"

#include <QtCore/QString>

#include <string>

namespace Kelvaris::System {

/// The path whose text is `text`. Any text makes a path; what the platform cannot hold is refused when it is used.
inline FilePath2 toFilePath2(const QString& text)
{
    const std::wstring wide = text.toStdWString();
    return {wide.data(), wide.size()};
}

/// The path's text, in the separators that it has.
inline QString toQString(const FilePath2& path)
{
    return QString::fromWCharArray(path.c_str());
}

} // namespace Kelvaris::System
