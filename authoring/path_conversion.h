#pragma once

#include "kelvaris/system/file_path2.h"

#include <filesystem>

namespace Authoring {

/// The same path for the standard library's operations on files, and back.
/// @throws SystemError  with core 5 when the text is not valid Unicode
std::filesystem::path toStdPath(const Kelvaris::System::FilePath2& path);
Kelvaris::System::FilePath2 toFilePath2(const std::filesystem::path& path);

} // namespace Authoring
