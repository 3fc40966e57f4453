#pragma once

#include "host/core/opc/package_data.h"
#include "host/core/opc/package_reference.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/io/opc_packaging/opc_package_ref.h"

#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// Between the handles that callers have and what stands behind them.
struct PackageAccess
{
    static const PackagePtr& data(const OpcPackage& package) noexcept { return package.m_data; }
    static const PackagePtr& data(const OpcPackagePart& part) noexcept { return part.m_package; }

    static const PartPtr& record(const OpcPackagePart& part) noexcept { return part.m_record; }
    static const RelationshipRecord& record(const OpcPackageRelationship& relationship) noexcept
    {
        return *relationship.m_record;
    }

    static OpcPackagePart part(PackagePtr package, PartPtr record) noexcept
    {
        return OpcPackagePart{std::move(package), std::move(record)};
    }
    static OpcPackageRelationship relationship(RelationshipPtr record) noexcept
    {
        return OpcPackageRelationship{std::move(record)};
    }
    static OpcPackageRef reference(std::shared_ptr<PackageReference> reference) noexcept
    {
        return OpcPackageRef{std::move(reference)};
    }

    /// All but the relationship parts.
    static OpcPackagePartCollection parts(const PackagePtr& package, const std::vector<PartPtr>& records);
    static OpcPackageRelationshipCollection relationships(const std::vector<RelationshipPtr>& records);
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
