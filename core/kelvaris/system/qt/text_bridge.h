#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"

#include <QtCore/QString>

namespace Kelvaris::System {

/// @return  core 5 when `text` holds half a surrogate pair
KELVARIS_QTCORE_API Expected<String2, ErrorCode2> qStringToUTF8(const QString& text);

/// @return  core 5 when `text` is not valid UTF-8
KELVARIS_QTCORE_API Expected<QString, ErrorCode2> utf8ToQString(const String2& text);

} // namespace Kelvaris::System
