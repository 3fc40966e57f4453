#pragma once

#include "kelvaris/export.h"

namespace Kelvaris::System {
class ErrorCategory2;
}

namespace Kelvaris::System::IO::OpcPackaging {

/// The values of `opc_error_category()`. Rule numbers are those of ISO/IEC 29500-2.
enum class OpcError : int {
    noSuchPart = 1,
    notADirectory = 2,         ///< a file can be added below a directory only
    invalidPartName = 3,       ///< M1.1 to M1.10
    partExists = 4,            ///< M1.12, M2.14, M3.3: two names that differ at most in ASCII case
    derivedPartName = 5,       ///< M1.11: one part's name continues another's
    notAnArchive = 6,          ///< no end record of a ZIP file, or none that can be believed
    damagedArchive = 7,        ///< sizes and offsets outside the file, overlaps, headers that disagree (M3.14)
    unsupportedEntry = 8,      ///< M3.15 to M3.19: method, several disks, version
    encryptedEntry = 9,        ///< M3.9
    checksumMismatch = 10,     ///< an entry's bytes are not those that its checksum was made of
    damagedEntry = 11,         ///< compressed bytes that do not inflate to the size that is told
    noContentTypes = 12,       ///< M2.1, M3.10: no "[Content_Types].xml"
    invalidContentTypes = 13,  ///< M2.5 to M2.10
    invalidMediaType = 14,     ///< M1.13 to M1.15
    invalidXml = 15,           ///< not well-formed, of another encoding (M1.17), or against the schema (M1.20, M1.21)
    documentTypeDeclared = 16, ///< M1.18: a DOCTYPE
    invalidRelationships = 17, ///< M1.25 to M1.31
    duplicateRelationshipId = 18, ///< M1.26
    invalidCoreProperties = 19,   ///< M4.2 to M4.5
    severalCoreProperties = 20,   ///< M4.1
    propertyNotSet = 21,          ///< the package does not hold that core property
    targetIsExternal = 22,        ///< the relationship leads out of the package, so that there is no part behind it
    limitExceeded = 23,           ///< more than the limits of `limits.h` allow
    unsafeDestination =
        24, ///< a part would be written outside the directory, or under a name that the platform cannot hold
    destinationExists = 25, ///< a file stands already where a part would be written
    destinationClash = 26,  ///< two parts would be written to one file
    invalidPieces = 27,     ///< M2.11, M2.15, M2.17: pieces and items that collide
    packageInUse = 28,      ///< the operation asks for a package that is no longer there
};

KELVARIS_CORE_API const ErrorCategory2& opc_error_category();

} // namespace Kelvaris::System::IO::OpcPackaging
