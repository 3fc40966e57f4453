#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"
#include "kelvaris/system/file_path2.h"

#include <string>

namespace Kelvaris::System::Disk {

/// The path as the system's calls take it: UTF-8 without a NUL.
/// @return  core 5 when the path is no valid text; the system's EINVAL when it holds a NUL
KELVARIS_CORE_API Expected<std::string, ErrorCode2> nativePath(const FilePath2& path);

/// The path for messages; any path has one.
KELVARIS_CORE_API std::string displayedPath(const FilePath2& path);

} // namespace Kelvaris::System::Disk
