#pragma once

#include "host/core/paths/disk/file_handle.h"
#include "kelvaris/system/expected.h"

#include <string>

namespace Kelvaris::System::Disk {

/// The temporary file of a save: locked as long as it is open, so that a save that runs and one that was killed can be
/// told apart.
struct SavingFile
{
    FileHandle handle;
    std::string path;
};

/// Makes the temporary file beside `target` and removes what killed saves of the same target left behind.
///
/// @param target  as the system takes it, with a file name at its end
/// @return  a value of `errno` when it cannot be made
Expected<SavingFile, int> openSavingFile(const std::string& target, unsigned mode);

} // namespace Kelvaris::System::Disk
