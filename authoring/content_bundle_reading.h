#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/string2.h"

#include <vector>

namespace Authoring {

/// Writes a content bundle's files below `directory`.
/// @return  the error of opening the bundle or of unpacking it
Kelvaris::System::Expected<void, Kelvaris::System::ErrorCode2>
unpackContentBundle(const Kelvaris::System::FilePath2& bundle, const Kelvaris::System::FilePath2& directory);

/// What the package's relationships of a type lead to, as local paths in the order of the relationships. A type
/// without relationships gives no path.
///
/// @param relationshipType  any text; it is compared letter for letter
/// @return  the error of opening the bundle or of reading its relationships
/// @throws bad_expected_access<ErrorCode2>  one of the targets is no local file
Kelvaris::System::Expected<std::vector<Kelvaris::System::FilePath2>, Kelvaris::System::ErrorCode2>
contentBundleTargets(const Kelvaris::System::String2& relationshipType, const Kelvaris::System::FilePath2& bundle);

} // namespace Authoring
