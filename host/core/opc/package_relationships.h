#pragma once

#include "host/core/opc/markup/relationships.h"
#include "host/core/opc/package_parts.h"
#include "host/core/opc/relationship_record.h"
#include "host/core/opc/result.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// The relationships of a package and of its parts, those of each source read on first use.
///
/// Sources are "/" for the package and the names of parts. Every operation may answer opc 15 to 18 and 23 for the
/// relationships part, or what `PackageParts` answers.
class PackageRelationships
{
public:
    /// @param parts  outlives this object
    explicit PackageRelationships(PackageParts& parts) noexcept : m_parts{parts} {}

    /// Those of one source, none when it has no relationships part. Valid until the next change.
    Result<const Markup::Relationships*> of(std::string_view source);

    /// Those of one type. Valid until the next change.
    Result<std::vector<const Markup::Relationship*>> ofType(std::string_view source, std::string_view type);

    Result<std::vector<RelationshipPtr>> records(std::string_view source);
    Result<std::vector<RelationshipPtr>> recordsByType(std::string_view source, std::string_view type);

    /// @return  the new one, valid until the next change; opc 17 when type or target will not do
    Result<const Markup::Relationship*> add(std::string_view source, std::string_view type, std::string_view target,
                                            OpcTargetMode mode);

    /// For a handle that outlives changes.
    RelationshipPtr record(std::string_view source, const Markup::Relationship& relationship);

    /// Does nothing when there is none of that id.
    Result<> remove(std::string_view source, std::string_view id);

    /// Makes `target` the only one of its type from this source.
    Result<> replaceByType(std::string_view source, std::string_view type, std::string_view target);

    /// Adds what has changed to what a save must write anew.
    void generate(PackageItems::Generated& generated) const;

private:
    struct Set
    {
        CopyOnWrite<Markup::Relationships> document;
        PartPtr part; ///< null until there is one
    };

    Result<Set*> setOf(std::string_view source);
    Result<Set> read(std::string_view source) const;
    PackageParts& m_parts;
    std::shared_ptr<const std::string> m_packageName; ///< for records; null until there is one
    std::map<std::string, Set, std::less<>> m_sets;   ///< by the key of the source
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
