#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"
#include "kelvaris/system/string.h"
#include "kelvaris/system/string2.h"

#include <string>

/// A schematic bundle is built over several calls. Between them it lives in the table of open bundles, and the caller
/// holds its identifier. No order of the calls is enforced, apart from what the bundle itself asks for.
///
/// An identifier that no bundle has makes a call throw RuntimeError with the identifier in its text.
namespace Authoring {

/// Opens a new, empty bundle.
/// @return  its identifier
Kelvaris::System::String createSchematicBundle();

/// Adds the root schematic, or takes another one for it.
/// @return  the URI of the schematic's part
/// @throws bad_expected_access<ErrorCode2>  the bundle refused; it stays usable
Kelvaris::System::String2 setRootSchematic(const Kelvaris::System::FilePath2& schematic, const std::string& bundleId);

/// Adds a schematic below a parent that is in the bundle already.
/// @param parentUri  what the call that added the parent gave
/// @return  the URI of the schematic's part
/// @throws bad_expected_access<ErrorCode2>  there is no such parent, or the bundle refused; it stays usable
Kelvaris::System::String2 addDescendantSchematic(const Kelvaris::System::FilePath2& schematic,
                                                 const Kelvaris::System::FilePath2& parentSchematic,
                                                 const Kelvaris::System::IO::OpcPackaging::OpcPackagePartUri& parentUri,
                                                 const std::string& bundleId);

/// Writes the bundle as it is now; it stays open. A failure to write is passed over in silence.
void writeSchematicBundle(const Kelvaris::System::FilePath2& target, const std::string& bundleId);

/// Drops a bundle, written or not. Unlike the others it takes any identifier.
void closeSchematicBundle(const std::string& bundleId);

/// Drops all bundles, written or not.
void closeAllSchematicBundles();

} // namespace Authoring
