#pragma once

#include <string>
#include <string_view>

namespace HostShell {

/// Whether a call of the function shows a window, so that it needs a display.
bool opensWindow(std::string_view functionName);

/// Whether the script names a function that shows a window.
///
/// A script without such a name runs without a display connection. A name that a script puts together from pieces is
/// not seen.
bool namesWindowFunction(std::string_view script);

/// Why a function that shows a window was not called, as one sentence.
std::string noDisplay(std::string_view functionName);

} // namespace HostShell
