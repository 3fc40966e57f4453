#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/mime_type.h"
#include "kelvaris/system/io/opc_packaging/opc_enums.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_collection.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"
#include "kelvaris/system/io/opc_packaging/opc_package_properties.h"
#include "kelvaris/system/io/opc_packaging/opc_package_relationship.h"
#include "kelvaris/system/io/opc_packaging/opc_package_relationship_collection.h"
#include "kelvaris/system/string2.h"

#include <memory>

namespace Kelvaris::System::IO::OpcPackaging {

/// An open package (ISO/IEC 29500-2): parts, relationships and core properties in a ZIP file.
///
/// Opening reads the archive's directory. Everything else is read and checked when it is first used and then kept, so
/// that each operation may answer that the package breaks a rule: opc 6 to 20, 23 and 27, with the file, the entry and
/// the rule; or the system's error when the file cannot be read any longer.
///
/// Changes are made in memory; the file changes when a bundle is written.
class KELVARIS_CORE_API OpcPackage
{
public:
    /// @return  the system's error when the file cannot be opened, core 7 when it is no regular file, or the rule it
    /// breaks
    static Expected<OpcPackage, ErrorCode2> open(const FilePath2& path, OpcPackageOpenFlag flag);

    /// For the host's own use.
    explicit OpcPackage(std::shared_ptr<detail::PackageData> data) noexcept;

    OpcPackage(const OpcPackage&) = delete;
    OpcPackage(OpcPackage&&) noexcept;
    OpcPackage& operator=(const OpcPackage&) = delete;
    OpcPackage& operator=(OpcPackage&&) noexcept;
    virtual ~OpcPackage();

    /// All parts but the relationship parts.
    virtual Expected<OpcPackagePartCollection, ErrorCode2> parts() const;

    /// The relationships of the package itself, in their order; none is no error.
    virtual Expected<OpcPackageRelationshipCollection, ErrorCode2> relationships() const;

    /// Those of exactly that type; none is no error.
    virtual Expected<OpcPackageRelationshipCollection, ErrorCode2> relationshipsByType(const String2& type) const;

    /// A part by its name, in any ASCII case.
    /// @return  opc 1 when there is none, opc 3 when `uri` is no valid name
    virtual Expected<OpcPackagePart, ErrorCode2> part(const OpcPackagePartUri& uri) const;

    /// The part that a relationship leads to.
    /// @return  opc 1 when there is none, opc 22 when the target lies outside the package
    virtual Expected<OpcPackagePart, ErrorCode2> partFromRelationship(const OpcPackageRelationship& relationship) const;

    /// A new, empty part.
    /// @return  opc 3 when `uri` is no valid name, opc 4 when a part of that name (in any ASCII case) exists,
    ///          opc 5 when the name continues another part's or the other way round, opc 14 when `type` is no media
    ///          type
    Expected<OpcPackagePart, ErrorCode2> createPart(const OpcPackagePartUri& uri, const MIMEType& type,
                                                    OpcPackageCompressionType compression);

    /// A new relationship of the package, with an identifier of its own. An internal target need not exist yet.
    /// @return  opc 3 when `target` is no valid name
    virtual Expected<OpcPackageRelationship, ErrorCode2> createRelationship(const OpcPackageUri& target,
                                                                            OpcTargetMode mode, const String2& type);

    /// The core properties. The object lives as long as the package.
    OpcPackageProperties& packageProperties();

private:
    friend struct detail::PackageAccess;

    std::shared_ptr<detail::PackageData> m_data;
};

/// Opens an existing package, reading on demand.
KELVARIS_CORE_API Expected<OpcPackage, ErrorCode2> open_package(const FilePath2& path);

} // namespace Kelvaris::System::IO::OpcPackaging
