#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include "host/core/errors/table_category.h"

namespace Kelvaris::System::IO::OpcPackaging {

namespace {

using Errors::sentence;

constexpr Errors::Sentence sentences[] = {
    sentence(OpcError::noSuchPart, u8"the package has no such part"),
    sentence(OpcError::notADirectory, u8"files can be added to a directory of the package only"),
    sentence(OpcError::invalidPartName, u8"not a valid part name"),
    sentence(OpcError::partExists, u8"the package has a part of this name already"),
    sentence(OpcError::derivedPartName, u8"the part name continues that of another part"),
    sentence(OpcError::notAnArchive, u8"not a ZIP file"),
    sentence(OpcError::damagedArchive, u8"the ZIP file is damaged"),
    sentence(OpcError::unsupportedEntry, u8"the ZIP entry needs a feature that packages do not use"),
    sentence(OpcError::encryptedEntry, u8"the ZIP entry is encrypted"),
    sentence(OpcError::checksumMismatch, u8"the bytes of the ZIP entry do not match its checksum"),
    sentence(OpcError::damagedEntry, u8"the compressed bytes of the ZIP entry are damaged"),
    sentence(OpcError::noContentTypes, u8"the ZIP file is not a package: it has no content types"),
    sentence(OpcError::invalidContentTypes, u8"the content types of the package are not valid"),
    sentence(OpcError::invalidMediaType, u8"not a media type that a part can have"),
    sentence(OpcError::invalidXml, u8"not valid XML"),
    sentence(OpcError::documentTypeDeclared, u8"the XML declares a document type, which packages must not"),
    sentence(OpcError::invalidRelationships, u8"the relationships are not valid"),
    sentence(OpcError::duplicateRelationshipId, u8"two relationships have the same identifier"),
    sentence(OpcError::invalidCoreProperties, u8"the core properties are not valid"),
    sentence(OpcError::severalCoreProperties, u8"the package has several core properties parts"),
    sentence(OpcError::propertyNotSet, u8"the property is not set"),
    sentence(OpcError::targetIsExternal, u8"the relationship leads out of the package"),
    sentence(OpcError::limitExceeded, u8"a limit for packages is exceeded"),
    sentence(OpcError::unsafeDestination, u8"the part cannot be written under its name"),
    sentence(OpcError::destinationExists, u8"a file exists already where the part would be written"),
    sentence(OpcError::destinationClash, u8"two parts would be written to one file"),
    sentence(OpcError::invalidPieces, u8"the pieces of a part collide"),
    sentence(OpcError::packageInUse, u8"the package is no longer open"),
};

} // namespace

const ErrorCategory2& opc_error_category()
{
    static const Errors::TableCategory category{"opc", sentences};
    return category;
}

} // namespace Kelvaris::System::IO::OpcPackaging
