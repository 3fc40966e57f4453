#include "kelvaris/system/file_system.h"

#include "host/core/text/file_kinds.h"
#include "host/core/text/text_view.h"

#include <algorithm>

namespace Kelvaris::System {

FileType FileSystem::type(const FilePath& path)
{
    const std::u8string name = path.path().filename().u8string();
    const std::string lower = Text::toAsciiLower(Text::narrow(name));
    // a name that is nothing but an extension is a hidden file without one
    const auto matches = [&lower](const Text::FileKind& kind) {
        return lower.size() > kind.extension.size() && lower.ends_with(kind.extension);
    };
    const auto kinds = Text::fileKinds();
    const auto kind = std::ranges::find_if(kinds, matches);
    return kind == kinds.end() ? FileType::unknown : kind->type;
}

} // namespace Kelvaris::System
