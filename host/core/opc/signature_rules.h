#pragma once

#include "host/core/opc/package_data.h"
#include "host/core/opc/result.h"

#include <string>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// What the package standard asks of digital signatures: which relationships lead to them, of which types the parts
/// are, and that their XML keeps to the rules of the package's own (M1.17, M1.18, M6.1 to M6.5).
///
/// What one reader takes for a signature and another never sees is worse than none. Whether a signature is true is a
/// matter of those who check signatures.
class SignatureRules
{
public:
    /// @param package  outlives this object
    explicit SignatureRules(PackageData& package) noexcept : m_package{package} {}

    /// @return  opc 17  a signature that another part than the origin leads to, an origin that a part leads to, a
    /// second
    ///                  one, one outside the package, or a target of another media type
    Result<> verifyRelationship(const RelationshipRecord& relationship);

    /// @return  opc 15, 16, 23  the XML of a signature, see `Markup::parseXml`
    Result<> verifyParts();

private:
    Result<> verifyPart(const PartRecord& part);
    Result<> verifyOrigin(const RelationshipRecord& relationship);
    Result<> verifySource(const RelationshipRecord& relationship);
    Result<> verifyTarget(const RelationshipRecord& relationship, std::string_view mediaType);

    PackageData& m_package;
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
