#pragma once

#include "kelvaris/export.h"

namespace Kelvaris::System {
class ErrorCategory2;
}

namespace Kelvaris::System::IO::Bundle {

/// The values of `bundle_error_category()`.
enum class BundleError : int {
    wrongKind = 1,         ///< the file is a bundle of another kind than the one it was opened as
    invalidProperties = 2, ///< "/bundle.xml" cannot be read
    noPrimaryFile = 3,     ///< the example names no primary file, or one that is not there
    noDocumentation = 4,   ///< the example has no documentation page
    notADirectory = 5,     ///< a file can be added below a directory only
    noManufacturer = 6,    ///< the example names no manufacturer
    notAnExample = 7,      ///< what stands in a barrel's place for an example is none
    outsideRoot = 8,       ///< a schematic lies outside the directory of the root schematic
    noRoot = 9,            ///< the schematic bundle has no root schematic yet
};

KELVARIS_CORE_API const ErrorCategory2& bundle_error_category();

} // namespace Kelvaris::System::IO::Bundle
