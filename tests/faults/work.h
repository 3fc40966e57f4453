#pragma once

#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// Something that a user does with packages, in steps each of which can be tried again when it failed.
struct Work
{
    using Step = std::function<Kelvaris::System::Expected<void, Kelvaris::System::ErrorCode2>()>;

    std::string name;

    /// Writes the files that are there before.
    std::function<void(const std::filesystem::path& directory)> prepare;

    /// The steps on those files. They share what they have in memory, and take nothing from the test's own memory while
    /// they run.
    std::function<std::vector<Step>(const std::filesystem::path& directory)> begin;
};

/// For messages of parametrised tests.
std::ostream& operator<<(std::ostream& out, const Work& work);

/// Works on small files, in which every allocation can be made to fail one after the other.
const std::vector<Work>& smallWorks();

/// Works on a file that does not fit the memory of a package.
const std::vector<Work>& largeWorks();

/// All files below a directory with their bytes; directories end in "/".
using Snapshot = std::map<std::string, std::string>;
Snapshot snapshotOf(const std::filesystem::path& directory);

/// Writes them into an empty directory.
void restore(const Snapshot& snapshot, const std::filesystem::path& directory);
