#include "authoring/content_bundle_reading.h"

#include "kelvaris/system/io/bundle/content_bundle.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/io/opc_packaging/opc_package_relationship_collection.h"

namespace Authoring {

using namespace Kelvaris::System;
using IO::Bundle::ContentBundle;
using IO::OpcPackaging::OpcPackageRelationshipCollection;

using Paths = Expected<std::vector<FilePath2>, ErrorCode2>;

namespace {

Paths localTargets(const OpcPackageRelationshipCollection& relationships)
{
    std::vector<FilePath2> paths;
    IO::OpcPackaging::detail::OpcPackageRelationshipCollectionIteratorSentinel end;
    for (auto relationship = relationships.begin(); relationship != end; ++relationship)
        paths.push_back((*relationship).targetUri().value().toLocalFile(UrlLocalFileOptions::relativePath).value());
    return paths;
}

} // namespace

Expected<void, ErrorCode2> unpackContentBundle(const FilePath2& bundle, const FilePath2& directory)
{
    return ContentBundle::open(bundle).andThen([&](ContentBundle opened) { return opened.unpack(directory); });
}

Paths contentBundleTargets(const String2& relationshipType, const FilePath2& bundle)
{
    return ContentBundle::open(bundle)
        .andThen([&](ContentBundle opened) { return opened.package().relationshipsByType(relationshipType); })
        .andThen(&localTargets);
}

} // namespace Authoring
