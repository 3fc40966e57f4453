#include "kelvaris/system/io/bundle/bundle_error.h"

#include "host/core/errors/table_category.h"

namespace Kelvaris::System::IO::Bundle {

namespace {

using Errors::sentence;

constexpr Errors::Sentence sentences[] = {
    sentence(BundleError::wrongKind, u8"the file is a bundle of another kind",
             u8"choose a bundle of the kind that is wanted"),
    sentence(BundleError::invalidProperties, u8"the properties of the bundle cannot be read",
             u8"let the program that made the file write it anew, or mend the properties"),
    sentence(BundleError::noPrimaryFile, u8"the example has no primary file",
             u8"mark one of the files as the primary one in the editor of examples"),
    sentence(BundleError::noDocumentation, u8"the example has no documentation",
             u8"add a page called \"documentation.html\""),
    sentence(BundleError::notADirectory, u8"files can be added to a directory only", u8"choose a directory"),
    sentence(BundleError::noManufacturer, u8"the example names no manufacturer",
             u8"name one in the editor of examples"),
    sentence(BundleError::notAnExample, u8"not an example bundle",
             u8"make an example of it first, with \"pack\" or in the editor of examples"),
    sentence(BundleError::outsideRoot, u8"the schematic lies outside the directory of the root schematic",
             u8"move the schematic below the directory of the root schematic"),
    sentence(BundleError::noRoot, u8"the bundle has no root schematic yet", u8"set the root schematic first"),
};

} // namespace

const ErrorCategory2& bundle_error_category()
{
    static const Errors::TableCategory category{"bundle", sentences};
    return category;
}

} // namespace Kelvaris::System::IO::Bundle
