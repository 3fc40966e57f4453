#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"

namespace Authoring {

/// Makes a new, empty directory that nobody removes again: it is the caller's.
/// @return  its path, or the system's error
Kelvaris::System::Expected<Kelvaris::System::FilePath2, Kelvaris::System::ErrorCode2> createTemporaryDirectory();

} // namespace Authoring
