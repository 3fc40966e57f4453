#include "authoring/temporary_directory.h"

#include "kelvaris/system/io/temporary_path2.h"

#include <utility>

namespace Authoring {

using namespace Kelvaris::System;

Expected<FilePath2, ErrorCode2> createTemporaryDirectory()
{
    return IO::TemporaryPath2::createTemporaryDirectory().andThen(
        [](IO::TemporaryPath2 directory) { return std::move(directory).detach(); });
}

} // namespace Authoring
