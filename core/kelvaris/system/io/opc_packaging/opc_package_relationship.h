#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/io/opc_packaging/opc_enums.h"
#include "kelvaris/system/io/opc_packaging/opc_package_uri.h"
#include "kelvaris/system/string2.h"
#include "kelvaris/system/url.h"

#include <memory>

namespace Kelvaris::System::IO::OpcPackaging {

namespace detail {
struct RelationshipRecord;
struct PackageAccess;
} // namespace detail

/// One relationship, of a package or of a part. A handle: it stays usable after its package is gone.
class KELVARIS_CORE_API OpcPackageRelationship
{
public:
    OpcPackageRelationship(const OpcPackageRelationship&);
    OpcPackageRelationship(OpcPackageRelationship&&) noexcept;
    OpcPackageRelationship& operator=(const OpcPackageRelationship&);
    OpcPackageRelationship& operator=(OpcPackageRelationship&&) noexcept;
    ~OpcPackageRelationship();

    /// What the relationship comes from: "/" for the package, otherwise the part.
    Expected<OpcPackageUri, ErrorCode2> sourceUri() const;

    /// What it leads to. For a target in the package: the target's absolute name, resolved against the source, with the
    /// fragment if it has one. For one outside: its text as it stands in the file.
    ///
    /// @return  opc 17 when an internal target cannot be resolved to a name in the package
    Expected<Url, ErrorCode2> targetUri() const;

    /// The identifier, unique among the relationships of one source.
    const String2& id() const noexcept;

    /// The relationship type, a URI that is compared letter for letter.
    const String2& type() const noexcept;

    OpcTargetMode targetMode() const noexcept;

private:
    friend struct detail::PackageAccess;

    explicit OpcPackageRelationship(std::shared_ptr<const detail::RelationshipRecord> record) noexcept;

    std::shared_ptr<const detail::RelationshipRecord> m_record;
};

} // namespace Kelvaris::System::IO::OpcPackaging
