#pragma once

#include "kelvaris/system/file_path2.h"

#include <optional>

/// Opens a window with the example bundles in a directory and leaves it open; it is deleted when the user closes it.
///
/// @param directory  without one the user is asked, and nothing is opened when the user answers nothing
/// @throws what Authoring::findExampleBundles throws; no window is shown then
void openPrototypeExamplesWidget(const std::optional<Kelvaris::System::FilePath2>& directory);
