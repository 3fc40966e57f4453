#pragma once

#include "kelvaris/system/io/bundle/schematic_bundle.h"

#include <map>
#include <memory>
#include <string>

namespace Authoring {

/// The schematic bundles that scripts have open, by the text of their identifiers. An entry may be null: asking for an
/// identifier that is not there leaves one behind.
using SchematicBundleTable = std::map<std::string, std::shared_ptr<Kelvaris::System::IO::Bundle::SchematicBundle>>;

/// The one table of the process. It goes when the library is unloaded, and with it what was not written.
SchematicBundleTable& schematicBundleTable();

} // namespace Authoring
