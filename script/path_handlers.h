#pragma once

#include "script/func_call_frame.h"

/// Handlers of the functions that help scripts with paths.
namespace Script {

/// _filename(path): the path's last component.
Kelvaris::FUNC_ERROR filename(FuncCallFrame frame);

/// _parent_path(path): the path without its last component.
Kelvaris::FUNC_ERROR parentPath(FuncCallFrame frame);

/// _create_temporary_directory(): the new directory's path; no result when it could not be made.
Kelvaris::FUNC_ERROR createTemporaryDirectory(FuncCallFrame frame);

/// _bundle_test(anything): nothing. Scripts call it to see whether the library is loaded.
Kelvaris::FUNC_ERROR bundleTest(FuncCallFrame frame);

} // namespace Script
