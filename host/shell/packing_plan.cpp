#include "host/shell/packing_plan.h"

#include "host/core/errors/make_error.h"
#include "host/core/paths/disk/input_file.h"
#include "host/core/text/text_view.h"
#include "host/shell/exit_status.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/io/opc_packaging/opc_package_part_uri.h"

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <set>

namespace HostShell {

using namespace Kelvaris::System;
using IO::OpcPackaging::OpcError;
using IO::OpcPackaging::OpcPackagePartUri;
namespace fs = std::filesystem;

namespace {

template <class Value>
using Planned = Expected<Value, Refusal>;

using Files = std::vector<std::string>;

bool isHidden(const fs::path& path)
{
    return path.filename().string().starts_with('.');
}

bool isSame(const fs::path& left, const fs::path& right)
{
    std::error_code none;
    return fs::equivalent(left, right, none);
}

/// Files at the top come before those in directories, so that the first one has the others beside or below it.
void sortByPlace(Files& files)
{
    const auto depth = [](const std::string& file) { return std::ranges::count(file, '/'); };
    std::ranges::sort(files, [&](const std::string& left, const std::string& right) {
        return std::pair{depth(left), left} < std::pair{depth(right), right};
    });
}

template <class Wanted>
Planned<Files> filesBelow(const fs::path& directory, const Wanted& isWanted)
{
    Files files;
    std::error_code error;
    for (fs::recursive_directory_iterator entry{directory, error}, end; !error && entry != end;
         entry.increment(error)) {
        if (isHidden(entry->path()) && entry->is_directory())
            entry.disable_recursion_pending();
        else if (!isHidden(entry->path()) && entry->is_regular_file() && isWanted(entry->path()))
            files.push_back(entry->path().string());
    }
    if (error)
        return badInput(Errors::systemError(error.value(), Text::displayed(directory.string()), "cannot be read"));
    sortByPlace(files);
    return files;
}

/// Leaves the first mention of each file: by its own name, then below its directory, say. A link is a file of its own.
void removeRepeated(Files& files)
{
    std::set<fs::path> mentioned;
    std::erase_if(files, [&](const std::string& file) {
        return !mentioned.insert(fs::absolute(file).lexically_normal()).second;
    });
}

/// @param isWanted  which files of a directory are meant
template <class Wanted>
Planned<Files> expanded(const Files& words, const Wanted& isWanted)
{
    Files files;
    for (const std::string& word : words) {
        if (!fs::is_directory(word)) {
            files.push_back(word);
            continue;
        }
        const auto below = filesBelow(word, isWanted);
        if (!below)
            return below.error();
        files.insert(files.end(), below->begin(), below->end());
    }
    removeRepeated(files);
    return files;
}

bool isSchematic(const std::string& file)
{
    return file.ends_with(".kvsch");
}

/// Brings the primary file to the front.
/// @return  a sentence when nothing tells which one it is
std::optional<Refusal> putPrimaryFirst(Files& files, const CommandLine& line)
{
    if (!line.primary.empty()) {
        std::erase_if(files, [&](const std::string& file) { return isSame(file, line.primary); });
        files.insert(files.begin(), line.primary);
        return std::nullopt;
    }
    if (!fs::is_directory(line.arguments.front()))
        return std::nullopt;
    const auto isAtTop = [&](const std::string& file) {
        return isSchematic(file) && isSame(fs::path{file}.parent_path(), line.arguments.front());
    };
    if (std::ranges::count_if(files, isAtTop) != 1)
        return Refusal{ExitStatus::usage, "it is not clear which file of " + line.arguments.front() +
                                              " is the primary one: name it with --primary"};
    const auto primary = std::ranges::find_if(files, isAtTop);
    std::rotate(files.begin(), primary, primary + 1);
    return std::nullopt;
}

Planned<std::uint64_t> readableSize(const std::string& file)
{
    const auto opened = Disk::InputFile::open(toPath(file));
    if (!opened)
        return badInput(opened.error());
    return opened->size();
}

fs::path placeOf(const fs::path& file)
{
    std::error_code error;
    const fs::path place = fs::weakly_canonical(fs::absolute(file), error);
    return error ? fs::absolute(file) : place;
}

/// The path that a file has in a bundle: the first one its name, the others their places below its directory.
std::string pathInBundle(const std::string& file, const std::string& first)
{
    if (&file == &first)
        return fs::path{file}.filename().string();
    return placeOf(file).lexically_relative(placeOf(fs::absolute(first).parent_path())).generic_string();
}

Planned<std::string> partOf(const std::string& folder, const std::string& path, const std::string& file)
{
    if (path.starts_with(".."))
        return Refusal{ExitStatus::badInput, Text::displayed(file) +
                                                 ": lies outside the directory of the first file; move it there, "
                                                 "or name another file first"};
    const OpcPackagePartUri uri{Text::toString2(std::string_view{folder + "/" + path})};
    const auto name = uri.toString();
    if (!name)
        return badInput(name.error());
    return toText(*name);
}

Planned<std::vector<PlannedPart>> plannedParts(const Files& files, const std::string& folder)
{
    std::vector<PlannedPart> parts;
    std::set<std::string> names;
    for (const std::string& file : files) {
        const auto size = readableSize(file);
        if (!size)
            return size.error();
        auto part = partOf(folder, pathInBundle(file, files.front()), file);
        if (!part)
            return part.error();
        if (!names.insert(Text::toAsciiLower(*part)).second)
            return badInput(Errors::makeError(OpcError::partExists, Text::displayed(file), *part));
        parts.push_back({file, std::move(*part), *size});
    }
    return parts;
}

std::optional<Refusal> outputRefusal(const std::string& output, bool force)
{
    std::error_code none;
    if (force || !fs::exists(fs::symlink_status(output, none)))
        return std::nullopt;
    return Refusal{ExitStatus::outputExists,
                   Text::displayed(output) + ": exists already; choose another --output, or replace it with --force"};
}

Refusal nothingToPack(const CommandLine& line, const std::string& wanted)
{
    return Refusal{ExitStatus::badInput, Text::displayed(line.arguments.front()) + ": has no " + wanted +
                                             " to pack; name another file or directory"};
}

Planned<PackingPlan> planned(const Files& files, const std::string& folder, const std::string& output, bool force)
{
    auto parts = plannedParts(files, folder);
    if (!parts)
        return parts.error();
    if (auto refusal = outputRefusal(output, force))
        return *refusal;
    return PackingPlan{std::move(*parts), output};
}

} // namespace

std::uint64_t PackingPlan::size() const
{
    return std::accumulate(parts.begin(), parts.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const PlannedPart& part) { return sum + part.size; });
}

Planned<PackingPlan> planExample(const CommandLine& line)
{
    const auto several = std::ranges::find_if(
        line.keywords, [](const std::string& keyword) { return keyword.find(';') != std::string::npos; });
    if (several != line.keywords.end())
        return Refusal{ExitStatus::usage, "the keyword \"" + Text::displayed(*several) +
                                              "\" holds \";\", which stands between keywords in a bundle; "
                                              "give --keyword once for each"};
    auto files = expanded(line.arguments, [](const fs::path&) { return true; });
    if (!files)
        return files.error();
    if (auto refusal = putPrimaryFirst(*files, line))
        return *refusal;
    const std::string output =
        !line.output.empty() || files->empty() ? line.output : stemOf(files->front()) + ".kvbdl.zip";
    // what an earlier run has left in the directory is not of the design
    std::erase_if(*files, [&](const std::string& file) {
        return isSame(file, output) && std::ranges::count(line.arguments, file) == 0;
    });
    if (files->empty())
        return nothingToPack(line, "file");
    return planned(*files, "content", output, line.force);
}

Planned<PackingPlan> planBarrel(const CommandLine& line)
{
    const auto isExample = [](const fs::path& path) { return path.string().ends_with(".kvbdl.zip"); };
    const auto files = expanded(line.arguments, isExample);
    if (!files)
        return files.error();
    if (files->empty())
        return nothingToPack(line, "example (*.kvbdl.zip)");
    for (const std::string& file : *files) {
        const auto example = IO::Bundle::ExampleBundle::open(toPath(file));
        if (!example)
            return badInput(example.error());
    }
    return planned(*files, "examples", line.output.empty() ? "examples.kvexs" : line.output, line.force);
}

std::string stemOf(const std::string& path)
{
    std::string name = fs::path{path}.filename().string();
    for (const char* extension : {".zip", ".kvbdl", ".kvexs", ".kvsbd", ".kvsch"}) {
        if (name.ends_with(extension) && name != extension)
            name.resize(name.size() - std::string_view{extension}.size());
    }
    return name;
}

} // namespace HostShell
