#include "authoring/path_conversion.h"

#include "kelvaris/system/string.h"

#include <string>

namespace Authoring {

using Kelvaris::System::FilePath2;
using Kelvaris::System::String;

// By way of UTF-8: the standard library's own way between wide and narrow paths depends on the locale.

std::filesystem::path toStdPath(const FilePath2& path)
{
    const String text{std::wstring{path.c_str()}};
    return {text.toStdStringView()};
}

FilePath2 toFilePath2(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.data(), text.size()};
}

} // namespace Authoring
