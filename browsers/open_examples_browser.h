#pragma once

#include "kelvaris/system/file_path2.h"

#include <optional>

/// Opens a window with the examples of a barrel and leaves it open; it is deleted when the user closes it.
///
/// A barrel that cannot be opened is logged under "ui", and the window is empty.
/// @param path  the barrel; without one the user is asked, and nothing is opened when the user answers nothing
/// @throws bad_expected_access<ErrorCode2>  an example of the barrel cannot be opened; no window is shown then
void openExamplesBrowser(const std::optional<Kelvaris::System::FilePath2>& path);
