#pragma once

#include "script/func_call_frame.h"

/// Handlers of the functions that open a window. All but the first leave it open, return at once and give no result.
namespace Script {

/// _example_browser_2(barrels, target directory): runs until the user has created a design or closed the dialog; the
/// path of the design's primary file, no result without one.
Kelvaris::FUNC_ERROR exampleBrowser2(FuncCallFrame frame);

/// _create_examples_bundle_editor([barrel])
Kelvaris::FUNC_ERROR examplesBundleEditor(FuncCallFrame frame);

/// _create_example_bundle_editor([example bundle])
Kelvaris::FUNC_ERROR exampleBundleEditor(FuncCallFrame frame);

/// _proto_scriptable_bundle_editor([scriptable bundle])
Kelvaris::FUNC_ERROR scriptableBundleEditor(FuncCallFrame frame);

/// _proto_package_browser([package]): asks when there is none.
Kelvaris::FUNC_ERROR packageBrowser(FuncCallFrame frame);

/// _proto_examples_browser2([barrel]): asks when there is none.
Kelvaris::FUNC_ERROR examplesBrowser(FuncCallFrame frame);

/// _proto_example_browser([directory]): asks when there is none.
Kelvaris::FUNC_ERROR prototypeExampleBrowser(FuncCallFrame frame);

/// _bundle_viewer(package)
Kelvaris::FUNC_ERROR bundleViewer(FuncCallFrame frame);

} // namespace Script
