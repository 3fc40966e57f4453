#include "host/core/opc/package_access.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

OpcPackagePartCollection PackageAccess::parts(const PackagePtr& package, const std::vector<PartPtr>& records)
{
    auto parts = std::make_shared<std::vector<OpcPackagePart>>();
    parts->reserve(records.size());
    for (const PartPtr& record : records) {
        if (!record->holdsRelationships())
            parts->push_back(part(package, record));
    }
    return OpcPackagePartCollection{std::move(parts)};
}

OpcPackageRelationshipCollection PackageAccess::relationships(const std::vector<RelationshipPtr>& records)
{
    auto relationships = std::make_shared<std::vector<OpcPackageRelationship>>();
    relationships->reserve(records.size());
    for (const RelationshipPtr& record : records)
        relationships->push_back(relationship(record));
    return OpcPackageRelationshipCollection{std::move(relationships)};
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
