#include "tests/layout/source_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace {

using Folders = std::vector<std::string_view>;

/// Who may include whom: the folder of a file, and the folders whose headers it sees besides its own. "kelvaris" is
/// the contract, the headers of core/. The first folder that holds the file counts.
struct Rule
{
    std::string_view folder;
    Folders others;
};

const Rule rules[] = {
    {"core/kelvaris", {"kelvaris"}},
    {"authoring", {"kelvaris"}},
    {"models", {"kelvaris"}},
    {"editors", {"kelvaris", "models", "authoring"}},
    {"browsers", {"kelvaris", "authoring"}},
    {"script", {"kelvaris", "authoring", "editors", "browsers"}},
    {"host/core", {"kelvaris"}},
    {"host/qtcore", {"kelvaris"}},
    {"host/support", {"kelvaris"}},
    {"host/shell", {"kelvaris", "host/core", "host/qtcore", "host/support"}},
};

bool isIn(std::string_view path, std::string_view folder)
{
    return path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == '/';
}

struct Include
{
    std::string name;
    bool isQuoted;
};

/// The header that a line includes; an empty name when it includes none.
Include includeOf(std::string_view line)
{
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!line.starts_with("#include"))
        return {};
    const std::size_t begin = line.find_first_of("\"<");
    const std::size_t end = line.find_first_of("\">", begin + 1);
    if (begin == std::string_view::npos || end == std::string_view::npos)
        return {};
    return {std::string{line.substr(begin + 1, end - begin - 1)}, line[begin] == '"'};
}

bool isStandardHeader(std::string_view name)
{
    return !name.starts_with('Q') && name.find_first_of("./") == std::string_view::npos;
}

bool mayIncludeQuoted(std::string_view path, std::string_view name)
{
    const auto rule = std::ranges::find_if(rules, [path](const Rule& each) { return isIn(path, each.folder); });
    if (rule == std::end(rules))
        return false;
    // what the build makes of a form or of the file itself stands in no folder
    if (name.find('/') == std::string_view::npos)
        return name.starts_with("ui_") || name.ends_with(".moc");
    return isIn(name, rule->folder) ||
           std::ranges::any_of(rule->others, [name](std::string_view folder) { return isIn(name, folder); });
}

bool mayIncludeAngled(std::string_view path, std::string_view name)
{
    // the project's own headers are quoted, so that the rules see them
    if (std::ranges::any_of(rules, [name](const Rule& rule) { return isIn(name, rule.folder); }) ||
        isIn(name, "kelvaris"))
        return false;
    if (isIn(path, "core/kelvaris/system/qt"))
        return isStandardHeader(name) || name.starts_with("QtCore/");
    if (isIn(path, "core"))
        return isStandardHeader(name);
    if (isIn(path, "host/core"))
        return !name.starts_with('Q');
    return true;
}

bool mayInclude(std::string_view path, const Include& include)
{
    return include.isQuoted ? mayIncludeQuoted(path, include.name) : mayIncludeAngled(path, include.name);
}

/// "file includes header" for each line below `folder` that breaks a rule.
std::vector<std::string> offences(std::string_view folder)
{
    std::vector<std::string> found;
    for (const std::string& path : SourceFiles::codeBelow(folder)) {
        for (const std::string& line : SourceFiles::lines(path)) {
            const Include include = includeOf(line);
            if (!include.name.empty() && !mayInclude(path, include))
                found.push_back(path + " includes " + include.name);
        }
    }
    return found;
}

using Offences = std::vector<std::string>;

} // namespace

TEST(IncludeRules, EveryFolderSeesOnlyWhatItStandsOn)
{
    for (const Rule& rule : rules)
        EXPECT_EQ(offences(rule.folder), Offences{}) << rule.folder;
}

TEST(IncludeRules, EveryFolderWithCodeHasARule)
{
    for (const char* top : {"core", "authoring", "models", "editors", "browsers", "data", "script", "host"}) {
        for (const std::string& path : SourceFiles::codeBelow(top)) {
            EXPECT_TRUE(std::ranges::any_of(rules, [&path](const Rule& rule) { return isIn(path, rule.folder); }))
                << path;
        }
    }
}

TEST(IncludeRules, NothingButTheScriptLayerSeesTheScriptLayer)
{
    for (const Rule& rule : rules) {
        const std::string path = std::string{rule.folder} + "/a.cpp";
        EXPECT_EQ(mayInclude(path, {"script/a.h", true}), rule.folder == "script") << rule.folder;
    }
}

TEST(IncludeRules, ThePlugInSeesNothingOfTheHostsBodies)
{
    for (const char* folder : {"core/kelvaris", "authoring", "models", "editors", "browsers", "script"}) {
        const std::string path = std::string{folder} + "/a.cpp";
        EXPECT_FALSE(mayInclude(path, {"host/core/text/text_view.h", true})) << folder;
        EXPECT_FALSE(mayInclude(path, {"host/core/text/text_view.h", false})) << folder;
    }
}

TEST(IncludeRules, TheContractSeesTheStandardLibraryAlone)
{
    EXPECT_TRUE(mayInclude("core/kelvaris/system/a.h", {"string_view", false}));
    EXPECT_FALSE(mayInclude("core/kelvaris/system/a.h", {"QtCore/QString", false}));
    EXPECT_FALSE(mayInclude("core/kelvaris/system/a.h", {"QString", false}));
    EXPECT_FALSE(mayInclude("core/kelvaris/system/a.h", {"unistd.h", false}));
    EXPECT_TRUE(mayInclude("core/kelvaris/system/qt/a.h", {"QtCore/QString", false}));
    EXPECT_FALSE(mayInclude("core/kelvaris/system/qt/a.h", {"QtGui/QIcon", false}));
}

TEST(IncludeRules, BrowsersAndAuthoringSeeNoModelsAndModelsNoWindows)
{
    EXPECT_TRUE(mayInclude("editors/a.cpp", {"models/b.h", true}));
    EXPECT_FALSE(mayInclude("browsers/a.cpp", {"models/b.h", true}));
    EXPECT_FALSE(mayInclude("authoring/a.cpp", {"models/b.h", true}));
    EXPECT_FALSE(mayInclude("models/a.cpp", {"editors/b.h", true}));
    EXPECT_FALSE(mayInclude("models/a.cpp", {"authoring/b.h", true}));
    EXPECT_FALSE(mayInclude("browsers/a.cpp", {"editors/b.h", true}));
}

TEST(IncludeRules, TheHostsLibrariesDoNotSeeEachOther)
{
    EXPECT_FALSE(mayInclude("host/qtcore/a.cpp", {"host/core/text/text_view.h", true}));
    EXPECT_FALSE(mayInclude("host/support/a.cpp", {"host/core/text/text_view.h", true}));
    EXPECT_FALSE(mayInclude("host/core/text/a.cpp", {"QtCore/QString", false}));
    EXPECT_FALSE(mayInclude("host/shell/a.cpp", {"editors/a.h", true}));
    EXPECT_TRUE(mayInclude("host/shell/a.cpp", {"host/core/logging/log_sink.h", true}));
}

TEST(IncludeRules, ReadsTheLinesThatCompilersRead)
{
    EXPECT_EQ(includeOf("#include \"models/a.h\"").name, "models/a.h");
    EXPECT_TRUE(includeOf("  #include \"models/a.h\" // why").isQuoted);
    EXPECT_EQ(includeOf("#include <string>").name, "string");
    EXPECT_FALSE(includeOf("#include <string>").isQuoted);
    EXPECT_EQ(includeOf("// #include <string>").name, "");
    EXPECT_EQ(includeOf("").name, "");
}
