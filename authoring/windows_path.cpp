#include "authoring/windows_path.h"

#include <algorithm>
#include <cstddef>

namespace Authoring {

namespace {

constexpr std::wstring_view separators = L"/\\";

bool isSeparator(wchar_t character)
{
    return separators.find(character) != std::wstring_view::npos;
}

bool isDriveLetter(wchar_t character)
{
    return (L'A' <= character && character <= L'Z') || (L'a' <= character && character <= L'z');
}

/// "\\?\", "\\.\" and "\??\": names that go to the system's object manager. `path` begins with a separator.
bool beginsWithDeviceName(std::wstring_view path)
{
    if (path.size() < 4 || !isSeparator(path[3]) || (path.size() > 4 && isSeparator(path[4])))
        return false;
    if (isSeparator(path[1]))
        return path[2] == L'?' || path[2] == L'.';
    return path[1] == L'?' && path[2] == L'?';
}

std::size_t rootNameLength(std::wstring_view path)
{
    if (path.size() < 2)
        return 0;
    if (isDriveLetter(path[0]) && path[1] == L':')
        return 2;
    if (!isSeparator(path[0]))
        return 0;
    if (beginsWithDeviceName(path))
        return 3;
    if (path.size() >= 3 && isSeparator(path[1]) && !isSeparator(path[2]))
        return std::min(path.find_first_of(separators, 3), path.size());
    return 0;
}

/// The length of root name and root directory.
std::size_t rootLength(std::wstring_view path)
{
    return std::min(path.find_first_not_of(separators, rootNameLength(path)), path.size());
}

} // namespace

std::wstring_view pathFilename(std::wstring_view path)
{
    const std::wstring_view relative = path.substr(rootLength(path));
    const std::size_t separator = relative.find_last_of(separators);
    return separator == std::wstring_view::npos ? relative : relative.substr(separator + 1);
}

std::wstring_view pathParent(std::wstring_view path)
{
    const std::size_t root = rootLength(path);
    const std::wstring_view relative = path.substr(root);
    const std::size_t separator = relative.find_last_of(separators);
    if (relative.empty() || separator == std::wstring_view::npos)
        return path.substr(0, root);
    // the relative path begins with no separator, so that something is left before them
    return path.substr(0, root + relative.find_last_not_of(separators, separator) + 1);
}

} // namespace Authoring
