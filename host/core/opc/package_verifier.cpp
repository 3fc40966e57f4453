#include "host/core/opc/package_verifier.h"

#include "host/core/errors/make_error.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/text/text_view.h"

namespace Kelvaris::System::IO::OpcPackaging::detail {

Result<std::vector<std::string>> PackageVerifier::verify()
{
    auto verified = passedOver(m_package.core().load());
    if (verified)
        verified = passedOver(verifyRelationships());
    if (verified)
        verified = passedOver(m_signatures.verifyParts());
    if (verified)
        verified = verifyEntries();
    if (verified)
        verified = noteTypedNamesWithoutPart();
    if (!verified)
        return verified.error();
    noteStrayBytes();
    const std::vector<std::string>& entries = m_package.parts().diagnostics();
    m_diagnostics.insert(m_diagnostics.begin(), entries.begin(), entries.end());
    return std::move(m_diagnostics);
}

Result<> PackageVerifier::passedOver(const Result<>& verified) const
{
    return verified ? verified : passOver(m_package.parts().faults(), verified.error());
}

Result<> PackageVerifier::verifyRelationships()
{
    auto parts = m_package.parts().all();
    if (!parts)
        return parts.error();
    for (const PartPtr& part : **parts) {
        const auto source = Markup::sourceOfRelationshipsPart(part->name);
        if (!source)
            continue;
        if (auto verified = passedOver(verifyRelationshipsOf(*source)); !verified)
            return verified;
    }
    if (auto present = m_package.parts().findIfThere(Markup::packageRelationshipsPartName);
        present && *present == nullptr)
        m_diagnostics.push_back("the package has no relationships");
    return {};
}

Result<> PackageVerifier::verifyRelationshipsOf(const std::string& source)
{
    auto document = m_package.relationships().of(source);
    if (!document)
        return document.error();
    const std::vector<std::string>& found = (*document)->diagnostics();
    m_diagnostics.insert(m_diagnostics.end(), found.begin(), found.end());
    if (auto part = m_package.parts().findIfThere(source); source != Markup::packageSource && part && *part == nullptr)
        m_diagnostics.push_back("relationships of " + source + ", which is no part of the package");
    auto records = m_package.relationships().records(source);
    if (!records)
        return records.error();
    for (const RelationshipPtr& record : *records) {
        if (auto verified = passedOver(verifyRelationship(*record)); !verified)
            return verified;
    }
    return {};
}

Result<> PackageVerifier::verifyRelationship(const RelationshipRecord& relationship)
{
    if (relationship.source != Markup::packageSource &&
        Text::narrow(relationship.type) == Markup::corePropertiesRelationshipType)
        return Errors::makeError(OpcError::severalCoreProperties, relationship.subject(),
                                 "only the package leads to its core properties (M4.1)");
    if (auto verified = m_signatures.verifyRelationship(relationship); !verified)
        return verified;
    if (relationship.mode == OpcTargetMode::external)
        return {};
    const Markup::ResolvedTarget target = relationship.resolved();
    if (!target.isPartName())
        return {};
    auto part = m_package.parts().findIfThere(target.partName);
    if (part && *part == nullptr)
        m_diagnostics.push_back(relationship.subject() + " leads to " + target.partName + ", which is not there");
    return {};
}

Result<> PackageVerifier::noteTypedNamesWithoutPart()
{
    auto names = m_package.parts().typedNamesWithoutPart();
    if (!names)
        return names.error();
    for (const std::string& name : *names)
        m_diagnostics.push_back("the content types name " + name + ", which is no part of the package");
    return {};
}

/// A save does not bring them along.
void PackageVerifier::noteStrayBytes()
{
    const Zip::Archive* const archive = m_package.parts().items().archive();
    if (archive == nullptr)
        return;
    if (archive->bytesBefore() != 0)
        m_diagnostics.push_back(std::to_string(archive->bytesBefore()) + " bytes stand before the first entry");
    if (archive->bytesBehind() != 0)
        m_diagnostics.push_back(std::to_string(archive->bytesBehind()) + " bytes stand behind the archive");
}

Result<> PackageVerifier::verifyEntries()
{
    const Zip::Archive* const archive = m_package.parts().items().archive();
    if (archive == nullptr)
        return {};
    const Disk::ByteSink nowhere = [](std::span<const std::byte>) -> Result<> { return {}; };
    for (std::size_t index = 0; index < archive->entries().size(); ++index) {
        const bool isDirectory = archive->entries()[index].isDirectory();
        auto verified = passedOver(isDirectory ? archive->verify(index) : archive->stream(index, nowhere));
        if (!verified)
            return verified;
    }
    return {};
}

} // namespace Kelvaris::System::IO::OpcPackaging::detail
