#pragma once

class QApplication;

namespace HostShell {

/// The environment variable that chooses the colours of all windows: "light" or "dark". Without it, or with any other
/// text in it, the desktop's own colours stand.
inline constexpr const char* colourSchemeVariable = "HOLLERWICK_PALETTE";

/// Gives the application the colours that the variable asks for.
void applyColourScheme(QApplication& application);

} // namespace HostShell
