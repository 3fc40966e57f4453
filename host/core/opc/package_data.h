#pragma once

#include "host/core/opc/package_core.h"
#include "host/core/opc/package_parts.h"
#include "host/core/opc/package_relationships.h"
#include "host/core/opc/result.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/opc_packaging/opc_package_properties.h"

#include <memory>
#include <string>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// An open package, one for each time it was opened. All handles of it share it and keep it alive.
///
/// Opening reads the archive's directory. Content types, relationships, core properties and parts are read when they
/// are first used and then kept. Saving leaves it as it is: it goes on reading what it was opened from.
class PackageData : public std::enable_shared_from_this<PackageData>
{
public:
    /// A new package without parts.
    static std::shared_ptr<PackageData> create();

    /// @param faults  for a check: where broken rules go that can be passed over; outlives the package
    /// @return  as `Disk::InputFile::open`, or as `openSource`
    static Result<std::shared_ptr<PackageData>> openFile(const FilePath2& path, FaultLog* faults = nullptr);

    /// @param depth     in how many packages this one lies
    /// @param siblings  `nestedReadings` of the package that it lies in, if it lies in one
    /// @return  as `Zip::Archive::open`; opc 12 when there is no content-types stream, opc 23 when packages lie too
    ///          deep in packages
    static Result<std::shared_ptr<PackageData>> openSource(const Zip::ByteSourcePtr& source, int depth,
                                                           FaultLog* faults = nullptr,
                                                           SiblingReadingsPtr siblings = nullptr);

    PackageData(const PackageData&) = delete;
    PackageData& operator=(const PackageData&) = delete;

    PackageParts& parts() noexcept { return m_parts; }
    PackageRelationships& relationships() noexcept { return m_relationships; }
    PackageCore& core() noexcept { return m_core; }
    OpcPackageProperties& properties() noexcept { return m_properties; }
    const std::string& displayName() const noexcept { return m_parts.displayName(); }

    /// In how many packages this one lies.
    int depth() const noexcept { return m_depth; }

    /// A part that is not one of relationships.
    /// @return  opc 1 when there is none, opc 3 when `name` is no valid name
    Result<PartPtr> findPart(std::string_view name);

    /// The part that a relationship leads to.
    /// @param source  "/" for the package, otherwise the name of a part
    /// @return  opc 1 when there is none, opc 22 when the target lies outside the package
    Result<PartPtr> findTarget(std::string_view source, const Markup::Relationship& relationship);
    Result<PartPtr> findTarget(const RelationshipRecord& relationship);

    /// A new part with its bytes.
    /// @return  opc 3, 4, 5, 14
    Result<PartPtr> createPart(std::string_view name, std::string_view mediaType, Zip::PayloadPtr bytes,
                               PackageParts::Typing typing = PackageParts::Typing::byExtension);

    /// Writes a part's bytes anew.
    void setBytes(const PartPtr& part, Zip::PayloadPtr bytes) { m_parts.items().setPayload(part, std::move(bytes)); }

    /// Opens a part as a package in its place; nothing is copied when it is stored.
    Result<std::shared_ptr<PackageData>> openNested(const PartRecord& part);

    /// What the packages in this one have read.
    const SiblingReadingsPtr& nestedReadings();

    /// What the layer above has made of a part's bytes, so that it need not read them again. It knows whether that
    /// still holds.
    std::shared_ptr<const void>& keptReading() noexcept { return m_keptReading; }

    /// Saves the package.
    /// @return  the error of reading or writing; the file and the package are as they were then
    Result<> write(const FilePath2& path) const;

private:
    PackageData();
    PackageData(std::string displayName, PackageItems items, int depth, FaultLog* faults);

    template <class Subject>
    Result<PartPtr> findTarget(std::string_view source, std::string_view target, OpcTargetMode mode,
                               const Subject& subject);

    PackageParts m_parts;
    PackageRelationships m_relationships{m_parts};
    PackageCore m_core{m_parts, m_relationships};
    OpcPackageProperties m_properties{*this};
    SiblingReadingsPtr m_nestedReadings;
    std::shared_ptr<const void> m_keptReading;
    int m_depth = 0;
};

using PackagePtr = std::shared_ptr<PackageData>;

} // namespace Kelvaris::System::IO::OpcPackaging::detail
