#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"

#include <vector>

namespace Authoring {

/// Packs example bundles into one barrel, in the order of the list and without any property of its own.
///
/// The examples stand under "examples" in the package, at their places relative to the first one.
///
/// @param exampleFiles  files of example bundles; the first one's directory is the base
/// @param output        used as it is: no extension is appended
/// @return  what writing the barrel gave
/// @throws RuntimeError, std::filesystem::filesystem_error  as `bundlePartUris`
/// @throws bad_expected_access<ErrorCode2>  a file cannot be added; nothing was written
Kelvaris::System::Expected<void, Kelvaris::System::ErrorCode2>
createExamples(const std::vector<Kelvaris::System::FilePath2>& exampleFiles, const Kelvaris::System::FilePath2& output);

} // namespace Authoring
