#pragma once

#include <QtCore/QString>

#include <optional>
#include <string>

namespace HostShell {

bool isValidUtf8(const std::string& text);

/// What keeps `text` from being a text of a script function: "a NUL character" or "half a surrogate pair".
std::optional<std::string> flawOf(const QString& text);

} // namespace HostShell
