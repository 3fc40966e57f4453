// The declarations stand in the order in which the functions are registered, which scripts and the host's list show.

#include "script/content_bundle_handlers.h"
#include "script/func_registration.h"
#include "script/path_handlers.h"
#include "script/schematic_bundle_handlers.h"
#include "script/window_handlers.h"

namespace Script {

namespace {

constexpr auto text = Kelvaris::argTypeStringArray;
constexpr auto texts = Kelvaris::argTypeStringArray;
constexpr auto unused = Kelvaris::argTypeStringArray; // a declaration lists one entry at least

// clang-format off
const FuncRegistration exampleBrowser2Function{"_example_browser_2", {texts, text}, 2, 2, FuncHandler<&exampleBrowser2>{}};
const FuncRegistration examplesBundleEditorFunction{"_create_examples_bundle_editor", {text}, 0, 1, FuncHandler<&examplesBundleEditor>{}};
const FuncRegistration exampleBundleEditorFunction{"_create_example_bundle_editor", {text}, 0, 1, FuncHandler<&exampleBundleEditor>{}};
const FuncRegistration createTemporaryDirectoryFunction{"_create_temporary_directory", {unused}, 0, 0, FuncHandler<&createTemporaryDirectory>{}};
const FuncRegistration unpackContentBundleFunction{"_unpack_content_bundle", {text, text}, 2, 2, FuncHandler<&unpackContentBundle>{}};
const FuncRegistration contentBundleTargetsFunction{"_content_bundle_targets", {text, text}, 2, 2, FuncHandler<&contentBundleTargets>{}};
const FuncRegistration parentPathFunction{"_parent_path", {text}, 1, 1, FuncHandler<&parentPath>{}};
const FuncRegistration filenameFunction{"_filename", {text}, 1, 1, FuncHandler<&filename>{}};
const FuncRegistration scriptableBundleEditorFunction{"_proto_scriptable_bundle_editor", {text}, 0, 1, FuncHandler<&scriptableBundleEditor>{}};
const FuncRegistration packageBrowserFunction{"_proto_package_browser", {text}, 0, 1, FuncHandler<&packageBrowser>{}};
const FuncRegistration examplesBrowserFunction{"_proto_examples_browser2", {text}, 0, 1, FuncHandler<&examplesBrowser>{}};
const FuncRegistration prototypeExampleBrowserFunction{"_proto_example_browser", {text}, 0, 1, FuncHandler<&prototypeExampleBrowser>{}};
const FuncRegistration bundleTestFunction{"_bundle_test", {unused}, 1, 1, FuncHandler<&bundleTest>{}};
const FuncRegistration bundleViewerFunction{"_bundle_viewer", {text}, 1, 1, FuncHandler<&bundleViewer>{}};
const FuncRegistration createSchematicBundleFunction{"_schematic_bundle_create", {unused}, 0, 0, FuncHandler<&createSchematicBundle>{}};
const FuncRegistration setRootSchematicFunction{"_schematic_bundle_set_root", {text, text}, 2, 2, FuncHandler<&setRootSchematic>{}};
const FuncRegistration addDescendantSchematicFunction{"_schematic_bundle_add_descendant", {text, text, text, text}, 4, 4, FuncHandler<&addDescendantSchematic>{}};
const FuncRegistration writeSchematicBundleFunction{"_schematic_bundle_write", {text, text}, 2, 2, FuncHandler<&writeSchematicBundle>{}};
const FuncRegistration closeSchematicBundleFunction{"_schematic_bundle_close", {text}, 1, 1, FuncHandler<&closeSchematicBundle>{}};
const FuncRegistration clearAllSchematicBundlesFunction{"_schematic_bundle_clear_all", {unused}, 0, 0, FuncHandler<&clearAllSchematicBundles>{}};
// the name is misspelt; scripts call it by that name
const FuncRegistration identifyDescendantsFunction{"_schematic_bundle_helper_identify_descedants", {text, texts}, 2, 2, FuncHandler<&identifyDescendants>{}};
// clang-format on

} // namespace

} // namespace Script
