#pragma once

#include <QtGui/QIcon>

namespace HostShell {

/// The icon of that name in the user's theme, or else the program's own.
/// @param name  of the freedesktop.org naming, such as "document-open"; one of those in shell.qrc
QIcon shellIcon(const QString& name);

} // namespace HostShell
