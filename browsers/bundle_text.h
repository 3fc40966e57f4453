#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/string_vector2.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// A property of a bundle as the lists show it: empty when the bundle does not hold it or it cannot be read. A list of
/// examples is worth having without one of its texts.
QString textOrEmpty(const Kelvaris::System::Expected<Kelvaris::System::String2, Kelvaris::System::ErrorCode2>& text);

/// The same for several texts, in their order.
QStringList
textsOrEmpty(const Kelvaris::System::Expected<Kelvaris::System::StringVector2, Kelvaris::System::ErrorCode2>& texts);
