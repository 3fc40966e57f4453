#pragma once

#include "host/core/bundle/bundle_kind.h"
#include "host/core/bundle/bundle_properties.h"
#include "host/core/opc/package_data.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"

#include <optional>
#include <string>
#include <string_view>

/// What all kinds of bundles have in common.
namespace Kelvaris::System::IO::Bundle::detail {

using OpcPackaging::detail::PackageData;
using OpcPackaging::detail::PackagePtr;
using OpcPackaging::detail::PartPtr;
using OpcPackaging::detail::Result;
using OpcPackaging::Zip::PayloadPtr;

/// The properties of a bundle and where they stand.
struct StoredProperties
{
    PartPtr part;
    PayloadPtr payload; ///< what had been put in the place of the part's bytes when they were read
    OpcPackaging::detail::CopyOnWrite<BundleProperties> values;
};

using StoredPropertiesPtr = std::shared_ptr<const StoredProperties>;

/// A new bundle of that kind.
Result<OpcPackaging::OpcPackage> createBundle(BundleKind kind);

/// @return  bundle 1 when the file is a bundle of another kind, otherwise as `OpcPackage::open`
Result<OpcPackaging::OpcPackage> openBundle(const FilePath2& path, BundleKind kind);

/// An example bundle is a content bundle as well, and so is a package that does not say what it is.
/// @return  bundle 1 with the names of both kinds, bundle 2 when the properties cannot be read
Result<> requireKind(PackageData& package, BundleKind kind);

/// Reads them once, as long as nobody changes them.
/// @return  null when the package has none; bundle 2 when there are several or they cannot be read
Result<StoredPropertiesPtr> readProperties(PackageData& package);

/// A new part and a relationship that leads from the package to it: both or none.
/// @return  opc 3, 4, 5, 14
Result<PartPtr> addRelatedPart(PackageData& package, const OpcPackaging::OpcPackagePartUri& uri,
                               std::string_view mediaType, PayloadPtr bytes, std::string_view relationshipType);

/// Takes back what `addRelatedPart` has done last.
void dropRelatedPart(PackageData& package, const PartPtr& part);

/// The one part that a relationship of that type leads to; the first, if there are several.
/// @return  null when there is no such relationship; opc 1 and 22 as `PackageData::findTarget`
Result<PartPtr> relatedPart(PackageData& package, std::string_view relationshipType);

} // namespace Kelvaris::System::IO::Bundle::detail
