#pragma once

#include "host/core/opc/package_data.h"
#include "host/core/opc/result.h"
#include "host/core/opc/signature_rules.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// The verdict on a package: reads and checks all of it, as any other use does piece by piece.
class PackageVerifier
{
public:
    /// @param package  outlives this object
    explicit PackageVerifier(PackageData& package) noexcept : m_package{package}, m_signatures{package} {}

    /// Walks content types, core properties, the relationships of every source, and the bytes of every entry.
    /// @return  a sentence for each thing that is left alone or put up with, or the first rule that is broken; of a
    ///          package with a log for faults, only what cannot be passed over
    Result<std::vector<std::string>> verify();

private:
    Result<> passedOver(const Result<>& verified) const;
    Result<> verifyRelationships();
    Result<> verifyRelationshipsOf(const std::string& source);
    Result<> verifyRelationship(const RelationshipRecord& relationship);
    Result<> verifyEntries();
    Result<> noteTypedNamesWithoutPart();
    void noteStrayBytes();

    PackageData& m_package;
    SignatureRules m_signatures;
    std::vector<std::string> m_diagnostics;
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
