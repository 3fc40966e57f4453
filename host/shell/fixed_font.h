#pragma once

#include <QtGui/QFont>

namespace HostShell {

/// The user's font for scripts and output.
QFont fixedFont();

} // namespace HostShell
