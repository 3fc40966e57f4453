#pragma once

#include "host/shell/typed_keys.h"

class QWidget;

namespace HostShell {

/// Presses and releases one key over `window` as a keyboard would: shortcuts, menus and the focus have their say.
void typeKey(QWidget& window, const KeyPress& press);

} // namespace HostShell
