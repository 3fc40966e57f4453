#include "host/core/paths/disk/native_path.h"

#include "host/core/errors/make_error.h"
#include "host/core/text/text_view.h"
#include "kelvaris/system/exception2.h"
#include "kelvaris/system/system_error.h"

#include <cerrno>
#include <cwchar>

namespace Kelvaris::System::Disk {

namespace {

bool holdsNul(const FilePath2& path)
{
    return path != FilePath2{path.c_str(), std::wcslen(path.c_str())};
}

} // namespace

Expected<std::string, ErrorCode2> nativePath(const FilePath2& path)
try {
    std::string native = Text::toUtf8(path.c_str());
    if (holdsNul(path))
        return Errors::systemError(EINVAL, Text::displayed(native), "cannot be the name of a file");
    return native;
} catch (const SystemError&) {
    return Errors::makeError(CoreError::invalidText, displayedPath(path));
}

std::string displayedPath(const FilePath2& path)
{
    // an empty path is seen best by its name
    return *path.c_str() == L'\0' ? "the empty path" : Text::displayed(path.c_str());
}

} // namespace Kelvaris::System::Disk
