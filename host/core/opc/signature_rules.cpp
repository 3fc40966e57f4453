#include "host/core/opc/signature_rules.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/media_type_text.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/markup/xml_document.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

namespace {

ErrorCode2 failure(const RelationshipRecord& relationship, std::string_view reason)
{
    return Errors::makeError(OpcError::invalidRelationships, relationship.subject(), reason);
}

} // namespace

Result<> SignatureRules::verifyRelationship(const RelationshipRecord& relationship)
{
    const std::string_view type = Text::narrow(relationship.type);
    if (type == Markup::signatureOriginRelationshipType)
        return verifyOrigin(relationship);
    if (type == Markup::certificateRelationshipType)
        return verifyTarget(relationship, Markup::certificateMediaType);
    if (type != Markup::signatureRelationshipType)
        return {};
    if (auto verified = verifySource(relationship); !verified)
        return verified;
    return verifyTarget(relationship, Markup::signatureMediaType);
}

Result<> SignatureRules::verifyOrigin(const RelationshipRecord& relationship)
{
    if (relationship.source != Markup::packageSource)
        return failure(relationship, "only the package leads to the origin of digital signatures (M6.1)");
    auto origins =
        m_package.relationships().recordsByType(Markup::packageSource, Markup::signatureOriginRelationshipType);
    if (!origins)
        return origins.error();
    if (origins->size() > 1)
        return failure(*origins->back(), "a package has one origin of digital signatures (M6.1)");
    return verifyTarget(relationship, Markup::signatureOriginMediaType);
}

Result<> SignatureRules::verifySource(const RelationshipRecord& relationship)
{
    auto origins =
        m_package.relationships().recordsByType(Markup::packageSource, Markup::signatureOriginRelationshipType);
    if (!origins)
        return origins.error();
    const bool isOrigin = origins->size() == 1 && Markup::partNameKey(origins->front()->resolved().partName) ==
                                                      Markup::partNameKey(relationship.source);
    if (isOrigin)
        return {};
    return failure(relationship, "only the origin leads to digital signatures (M6.4)");
}

Result<> SignatureRules::verifyTarget(const RelationshipRecord& relationship, std::string_view mediaType)
{
    if (relationship.mode == OpcTargetMode::external)
        return failure(relationship, "digital signatures stand in the package (M6.1)");
    const Markup::ResolvedTarget target = relationship.resolved();
    if (!target.isPartName())
        return {};
    auto part = m_package.parts().findIfThere(target.partName);
    if (!part)
        return part.error();
    if (*part == nullptr || Markup::isSameMediaType((*part)->mediaType, mediaType))
        return {};
    return failure(relationship,
                   "the content type of " + target.partName + " is not '" + std::string{mediaType} + "' (M6.2, M6.5)");
}

Result<> SignatureRules::verifyPart(const PartRecord& part)
{
    auto bytes = m_package.parts().read(part);
    if (!bytes)
        return bytes.error();
    if (auto document = Markup::parseXml(*bytes, m_package.parts().subjectOf(part.name)); !document)
        return document.error();
    return {};
}

Result<> SignatureRules::verifyParts()
{
    auto parts = m_package.parts().all();
    if (!parts)
        return parts.error();
    for (const PartPtr& part : **parts) {
        if (!Markup::isSameMediaType(part->mediaType, Markup::signatureMediaType))
            continue;
        auto verified = verifyPart(*part);
        if (!verified)
            verified = passOver(m_package.parts().faults(), verified.error());
        if (!verified)
            return verified;
    }
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
