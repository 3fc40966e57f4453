#pragma once

#include "kelvaris/system/file_type.h"

#include <span>
#include <string_view>

namespace Kelvaris::System::Text {

/// One way in which the host knows a kind of file. The kinds with several extensions have several of these.
struct FileKind
{
    FileType type;
    std::string_view extension; ///< with its dot, in lower case
    std::string_view mediaType;
};

/// All kinds. An extension that ends in another's stands before that one, so that the first match is the right one.
std::span<const FileKind> fileKinds() noexcept;

} // namespace Kelvaris::System::Text
