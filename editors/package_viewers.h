#pragma once

#include "kelvaris/system/file_path2.h"

#include <optional>

/// Two bare tree views for looking into a package. Both return at once, and closing the window ends everything.
///
/// They treat a file that cannot be read differently, and on purpose: the viewer's call fails, the browser shows an
/// empty tree.

/// Shows the parts of the package at `path` by their names.
/// @throws bad_expected_access<ErrorCode2>  the package cannot be opened or walked; there is no window then
void openBundleViewer(const Kelvaris::System::FilePath2& path);

/// Shows parts and relationships of the package at `path`. Without one it asks, and an answer that is cancelled shows
/// nothing. The empty path does not ask.
void openPackageBrowser(std::optional<Kelvaris::System::FilePath2> path);
