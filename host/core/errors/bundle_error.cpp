#include "kelvaris/system/io/bundle/bundle_error.h"

#include "host/core/errors/table_category.h"

namespace Kelvaris::System::IO::Bundle {

namespace {

using Errors::sentence;

constexpr Errors::Sentence sentences[] = {
    sentence(BundleError::wrongKind, u8"the file is a bundle of another kind"),
    sentence(BundleError::invalidProperties, u8"the properties of the bundle cannot be read"),
    sentence(BundleError::noPrimaryFile, u8"the example has no primary file"),
    sentence(BundleError::noDocumentation, u8"the example has no documentation"),
    sentence(BundleError::notADirectory, u8"files can be added to a directory only"),
    sentence(BundleError::noManufacturer, u8"the example names no manufacturer"),
    sentence(BundleError::notAnExample, u8"not an example bundle"),
    sentence(BundleError::outsideRoot, u8"the schematic lies outside the directory of the root schematic"),
    sentence(BundleError::noRoot, u8"the bundle has no root schematic yet"),
};

} // namespace

const ErrorCategory2& bundle_error_category()
{
    static const Errors::TableCategory category{"bundle", sentences};
    return category;
}

} // namespace Kelvaris::System::IO::Bundle
