#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/file_path.h"
#include "kelvaris/system/file_type.h"

namespace Kelvaris::System {

class KELVARIS_CORE_API FileSystem
{
public:
    FileSystem() = delete;

    /// The kind of the file at `path`, by its extension in any ASCII case. The file itself is not looked at.
    static FileType type(const FilePath& path);
};

} // namespace Kelvaris::System
