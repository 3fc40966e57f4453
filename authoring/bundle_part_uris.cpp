#include "authoring/bundle_part_uris.h"

#include "authoring/path_conversion.h"
#include "kelvaris/system/runtime_error.h"
#include "kelvaris/system/string.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <unordered_map>

namespace Authoring {

namespace fs = std::filesystem;

using Kelvaris::System::FilePath2;
using Kelvaris::System::RuntimeError;
using Kelvaris::System::String;
using Kelvaris::System::IO::OpcPackaging::OpcPackagePartUri;

namespace {

constexpr std::wstring_view separators = L"/\\";

/// With "/" for every separator: scripts write both on every platform.
fs::path genericPath(std::wstring text)
{
    std::ranges::replace(text, L'\\', L'/');
    return toStdPath({text.data(), text.size()});
}

std::wstring_view nameOf(std::wstring_view path)
{
    // behind no separator stands the whole text: npos + 1 is 0
    return path.substr(path.find_last_of(separators) + 1);
}

fs::path weaklyCanonical(const fs::path& path)
{
    std::error_code error;
    fs::path canonical;
    // A path of which nothing exists would stay relative, and then nothing could be said about its place.
    const fs::path directory = path.is_absolute() ? fs::path{} : fs::current_path(error);
    if (!error)
        canonical = fs::weakly_canonical(directory / path, error);
    if (error)
        throw fs::filesystem_error{"weakly_canonical", path, error};
    return canonical;
}

/// Finds the places of many files in few directories, relative to a base: each directory is looked up once.
class RelativePlaces
{
public:
    explicit RelativePlaces(const fs::path& base) : m_base{weaklyCanonical(base)} {}

    /// From the base to the file, where links to both lead.
    std::u8string of(const fs::path& path)
    {
        const fs::path name = path.filename();
        std::error_code error;
        if (name.empty() || name == "." || name == ".." || fs::is_symlink(fs::symlink_status(path, error)) || error)
            return lookedUp(path).u8string();
        const auto& written = path.native();
        const auto [known, isNew] = m_directories.try_emplace(written.substr(0, written.size() - name.native().size()));
        if (isNew)
            known->second = wayTo(path.parent_path());
        return known->second ? *known->second + name.u8string() : lookedUp(path).u8string();
    }

private:
    fs::path lookedUp(const fs::path& path) const { return weaklyCanonical(path).lexically_relative(m_base); }

    /// With a separator at its end; nothing for a directory that does not lie below the base.
    std::optional<std::u8string> wayTo(const fs::path& directory) const
    {
        const fs::path way = lookedUp(directory);
        // on another drive there is no way, and the base itself lies in what is above it
        if (way.empty() || *way.begin() == "..")
            return std::nullopt;
        return way == "." ? std::u8string{} : (way / "").u8string();
    }

    fs::path m_base;
    std::unordered_map<fs::path::string_type, std::optional<std::u8string>> m_directories; ///< as each is written
};

std::wstring secondaryPartPath(const FilePath2& file, RelativePlaces& places)
{
    const fs::path path = genericPath(file.c_str());
    const std::u8string relative = places.of(path);
    // On the first two characters and not on the first component: a name that begins with two dots is refused too.
    if (relative.starts_with(u8"..")) {
        // as it was given, doubled separators and all, which generic_u8string would take away
        const String text{path.u8string()};
        throw RuntimeError{"secondary file must exist within the directory hierarchy of the primary file: " +
                           text.toLegacyUtf8()};
    }
    return FilePath2{relative.data(), relative.size()}.c_str();
}

} // namespace

std::vector<OpcPackagePartUri> bundlePartUris(std::wstring_view folderName, const std::vector<FilePath2>& files)
{
    if (files.empty())
        throw RuntimeError{"the list of files is empty: there is nothing to put into the bundle"};

    const std::wstring folder = std::wstring{folderName} + L'\\';
    const std::wstring primary = files.front().c_str();
    const fs::path base = genericPath(primary).parent_path();

    std::vector<OpcPackagePartUri> uris;
    uris.reserve(files.size());
    uris.emplace_back((folder + std::wstring{nameOf(primary)}).c_str());
    if (files.size() == 1)
        return uris;

    RelativePlaces places{base};
    for (std::size_t index = 1; index < files.size(); ++index)
        uris.emplace_back((folder + secondaryPartPath(files[index], places)).c_str());
    return uris;
}

} // namespace Authoring
