#include "authoring/schematic_bundle_table.h"

namespace Authoring {

SchematicBundleTable& schematicBundleTable()
{
    static SchematicBundleTable table;
    return table;
}

} // namespace Authoring
