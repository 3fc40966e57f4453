#include "browsers/example_location.h"

#include "authoring/path_conversion.h"
#include "kelvaris/system/qt/path_bridge.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>

using namespace Kelvaris::System;
namespace fs = std::filesystem;

namespace {

constexpr int lastSuffix = 1000;

fs::path toPath(const QString& text)
{
    return Authoring::toStdPath(toFilePath2(text));
}

QString toNormalText(const fs::path& path)
{
    return toQString(Authoring::toFilePath2(path.lexically_normal()));
}

// The standard functions name their operation differently from library to library; users search for these words.
bool isTaken(const fs::path& path)
{
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    if (status.type() == fs::file_type::none)
        throw fs::filesystem_error{"exists", path, failure};
    return fs::exists(status);
}

std::ptrdiff_t countEntries(const fs::path& directory)
{
    std::error_code failure;
    fs::directory_iterator entry{directory, failure};
    if (failure)
        throw fs::filesystem_error{"directory_iterator::directory_iterator", directory, failure};

    std::ptrdiff_t count = 0;
    for (; entry != fs::directory_iterator{}; entry.increment(failure))
        ++count;
    if (failure)
        throw fs::filesystem_error{"directory_iterator::operator++", directory, failure};
    return count;
}

} // namespace

QString proposeLocation(const FilePath2& targetDirectory, const QString& title)
{
    // A title that begins with a separator stays below the directory; an empty one proposes a place in it, not beside
    // it.
    fs::path candidate = Authoring::toStdPath(targetDirectory) / toPath(title).relative_path();
    const fs::path base = candidate.filename();
    for (int n = 0; isTaken(candidate) && n < lastSuffix; ++n)
        candidate.replace_filename(fs::path{base} += "_" + std::to_string(n + 1));
    return toNormalText(candidate);
}

bool holdsEntries(const QString& location)
{
    if (!location.isValidUtf16()) // a name of nothing, which is typed and pasted on the way to one
        return false;
    const fs::path path = toPath(location);
    return isTaken(path) && countEntries(path) > 0;
}

QString normalLocation(const FilePath2& path)
{
    return toNormalText(Authoring::toStdPath(path));
}
