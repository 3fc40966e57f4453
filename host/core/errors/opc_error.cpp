#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include "host/core/errors/table_category.h"

namespace Kelvaris::System::IO::OpcPackaging {

namespace {

using Errors::sentence;

constexpr Errors::Sentence sentences[] = {
    sentence(OpcError::noSuchPart, u8"the package has no such part",
             u8"the command \"info\" lists the parts that there are"),
    sentence(OpcError::notADirectory, u8"files can be added to a directory of the package only",
             u8"choose a directory"),
    sentence(OpcError::invalidPartName, u8"not a valid part name", u8"give the file another name"),
    sentence(OpcError::partExists, u8"the package has a part of this name already",
             u8"give one of them another name; upper and lower case make no difference"),
    sentence(OpcError::derivedPartName, u8"the part name continues that of another part",
             u8"give one of the two another name"),
    sentence(OpcError::notAnArchive, u8"not a ZIP file", u8"choose a bundle, or get the file anew if it is one"),
    sentence(OpcError::damagedArchive, u8"the ZIP file is damaged", u8"get the file anew, or pack it again"),
    sentence(OpcError::unsupportedEntry, u8"the ZIP entry needs a feature that packages do not use",
             u8"pack the file again with plain compression, in one volume"),
    sentence(OpcError::encryptedEntry, u8"the ZIP entry is encrypted", u8"pack the file again without a password"),
    sentence(OpcError::checksumMismatch, u8"the bytes of the ZIP entry do not match its checksum",
             u8"get the file anew: its bytes have changed on the way"),
    sentence(OpcError::damagedEntry, u8"the compressed bytes of the ZIP entry are damaged",
             u8"get the file anew: its bytes have changed on the way"),
    sentence(OpcError::noContentTypes, u8"the ZIP file is not a package: it has no content types",
             u8"choose a bundle, or make one with \"pack\""),
    sentence(OpcError::invalidContentTypes, u8"the content types of the package are not valid",
             u8"let the program that made the file write it anew, or mend \"[Content_Types].xml\""),
    sentence(OpcError::invalidMediaType, u8"not a media type that a part can have",
             u8"write it as \"type/subtype\", without blanks"),
    sentence(OpcError::invalidXml, u8"not valid XML",
             u8"let the program that made the file write it anew, or mend the XML"),
    sentence(OpcError::documentTypeDeclared, u8"the XML declares a document type, which packages must not",
             u8"take the DOCTYPE out"),
    sentence(OpcError::invalidRelationships, u8"the relationships are not valid",
             u8"let the program that made the file write it anew, or mend the relationship"),
    sentence(OpcError::duplicateRelationshipId, u8"two relationships have the same identifier",
             u8"give one of the two another Id"),
    sentence(OpcError::invalidCoreProperties, u8"the core properties are not valid",
             u8"let the program that made the file write it anew, or mend the property"),
    sentence(OpcError::severalCoreProperties, u8"the package has several core properties parts",
             u8"keep one relationship to core properties, that of the package"),
    sentence(OpcError::propertyNotSet, u8"the property is not set", u8"set it in the editor of the bundle"),
    sentence(OpcError::targetIsExternal, u8"the relationship leads out of the package",
             u8"add the file to the package itself"),
    sentence(OpcError::limitExceeded, u8"a limit for packages is exceeded",
             u8"split the contents into several bundles"),
    sentence(OpcError::unsafeDestination, u8"the part cannot be written under its name",
             u8"rename the part, or unpack into a directory with a shorter path"),
    sentence(OpcError::destinationExists, u8"a file exists already where the part would be written",
             u8"choose a new directory, or move the file away"),
    sentence(OpcError::destinationClash, u8"two parts would be written to one file", u8"rename one of the two parts"),
    sentence(OpcError::invalidPieces, u8"the pieces of a part collide",
             u8"let the program that made the file write it anew, without pieces"),
    sentence(OpcError::packageInUse, u8"the package is no longer open", u8"open it again"),
};

} // namespace

const ErrorCategory2& opc_error_category()
{
    static const Errors::TableCategory category{"opc", sentences};
    return category;
}

} // namespace Kelvaris::System::IO::OpcPackaging
