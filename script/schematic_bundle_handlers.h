#pragma once

#include "script/func_call_frame.h"

/// Handlers of the functions that build a schematic bundle over several calls.
namespace Script {

/// _schematic_bundle_create(): the identifier of a new bundle.
Kelvaris::FUNC_ERROR createSchematicBundle(FuncCallFrame frame);

/// _schematic_bundle_set_root(schematic, id): the URI of its part.
Kelvaris::FUNC_ERROR setRootSchematic(FuncCallFrame frame);

/// _schematic_bundle_add_descendant(schematic, parent schematic, URI of the parent's part, id): the URI of its part.
Kelvaris::FUNC_ERROR addDescendantSchematic(FuncCallFrame frame);

/// _schematic_bundle_write(target, id): "OK", whether the file could be written or not.
Kelvaris::FUNC_ERROR writeSchematicBundle(FuncCallFrame frame);

/// _schematic_bundle_close(id): "OK".
Kelvaris::FUNC_ERROR closeSchematicBundle(FuncCallFrame frame);

/// _schematic_bundle_clear_all(): "OK".
Kelvaris::FUNC_ERROR clearAllSchematicBundles(FuncCallFrame frame);

/// _schematic_bundle_helper_identify_descedants(root, records): "schematic;parent schematic" for each one found.
Kelvaris::FUNC_ERROR identifyDescendants(FuncCallFrame frame);

} // namespace Script
