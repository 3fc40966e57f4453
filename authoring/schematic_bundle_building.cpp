#include "authoring/schematic_bundle_building.h"

#include "authoring/schematic_bundle_table.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/runtime_error.h"
#include "kelvaris/system/uuid.h"

#include <memory>

namespace Authoring {

using namespace Kelvaris::System;
using IO::Bundle::SchematicBundle;
using IO::OpcPackaging::OpcPackagePart;
using IO::OpcPackaging::OpcPackagePartUri;

namespace {

std::shared_ptr<SchematicBundle> openBundle(const std::string& bundleId)
{
    // The subscript is meant: an identifier that is not there leaves an entry without a bundle behind.
    std::shared_ptr<SchematicBundle> bundle = schematicBundleTable()[bundleId];
    if (!bundle)
        throw RuntimeError{"no open schematic bundle has the identifier \"" + bundleId + "\""};
    return bundle;
}

String2 uriText(const OpcPackagePart& part)
{
    return part.uri().value().toString().value();
}

} // namespace

String createSchematicBundle()
{
    const UUID identifier;
    schematicBundleTable().try_emplace(identifier.toStdString(), std::make_shared<SchematicBundle>());
    return identifier.toString();
}

String2 setRootSchematic(const FilePath2& schematic, const std::string& bundleId)
{
    return uriText(openBundle(bundleId)->setRootSchematic(schematic).value());
}

String2 addDescendantSchematic(const FilePath2& schematic, const FilePath2& parentSchematic,
                               const OpcPackagePartUri& parentUri, const std::string& bundleId)
{
    const std::shared_ptr<SchematicBundle> bundle = openBundle(bundleId);
    OpcPackagePart parent = bundle->package().part(parentUri).value();
    return uriText(bundle->addDescendantSchematic(schematic, parentSchematic, parent).value());
}

void writeSchematicBundle(const FilePath2& target, const std::string& bundleId)
{
    // Scripts get "OK" whatever became of the file, so nobody looks at the result.
    (void)openBundle(bundleId)->writeToFile(target);
}

void closeSchematicBundle(const std::string& bundleId)
{
    schematicBundleTable().erase(bundleId);
}

void closeAllSchematicBundles()
{
    schematicBundleTable().clear();
}

} // namespace Authoring
