#include "host/core/opc/limits.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;
namespace Limits = Kelvaris::System::IO::OpcPackaging::Limits;

const fs::path root = HOLLERWICK_SOURCE_DIR;

std::string textOf(const fs::path& path)
{
    std::ifstream file{path, std::ios::binary};
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>{file}, {}};
}

/// The first group of every match of `pattern`.
std::set<std::string> matches(const std::string& text, const std::regex& pattern)
{
    std::set<std::string> found;
    for (std::sregex_iterator match{text.begin(), text.end(), pattern}; match != std::sregex_iterator{}; ++match)
        found.insert((*match)[1]);
    return found;
}

/// "Suite.Test" of every test in the sources of the tests.
std::set<std::string> allTests()
{
    static const std::regex declaration{R"(TEST(?:_F|_P)?\((\w+),\s*(\w+)\))"};
    std::set<std::string> tests;
    for (const auto& entry : fs::recursive_directory_iterator{root / "tests"}) {
        if (entry.path().extension() != ".cpp")
            continue;
        const std::string text = textOf(entry.path());
        for (std::sregex_iterator match{text.begin(), text.end(), declaration}; match != std::sregex_iterator{};
             ++match)
            tests.insert((*match)[1].str() + '.' + (*match)[2].str());
    }
    return tests;
}

std::string withThousands(std::uint64_t number)
{
    std::string text = std::to_string(number);
    for (std::size_t place = text.size(); place > 3; place -= 3)
        text.insert(place - 3, ",");
    return text;
}

} // namespace

TEST(Documents, ConformanceNamesTestsThatExist)
{
    const std::set<std::string> tests = allTests();
    for (const char* document : {"docs/conformance.md", "docs/security.md"}) {
        for (const std::string& name : matches(textOf(root / document), std::regex{R"(`([A-Z]\w+\.[A-Z]\w+)`)"}))
            EXPECT_TRUE(tests.contains(name)) << document << " names " << name;
    }
}

TEST(Documents, ConformanceNamesPackagesThatExist)
{
    for (const std::string& name : matches(textOf(root / "docs/conformance.md"), std::regex{R"(`([a-z0-9-]+\.zip)`)"}))
        EXPECT_TRUE(fs::exists(root / "tests/data/broken" / name)) << name;
}

TEST(Documents, EveryRuleOfConformanceIsShownBySomething)
{
    const std::string text = textOf(root / "docs/conformance.md");
    for (const std::string& row : matches(text, std::regex{R"(\n(\| M[^\n]*))"}))
        EXPECT_TRUE(row.find('`') != std::string::npos || row.starts_with("| M7 ")) << row;
}

TEST(Documents, LimitsAreThoseOfTheHeader)
{
    const std::map<std::string, std::uint64_t> limits{
        {"inflateRatio", Limits::inflateRatio},   {"inflateGrace", Limits::inflateGrace},
        {"partInMemory", Limits::partInMemory},   {"entries", Limits::entries},
        {"xmlBytes", Limits::xmlBytes},           {"xmlDepth", Limits::xmlDepth},
        {"xmlAttributes", Limits::xmlAttributes}, {"xmlNamespaces", Limits::xmlNamespaces},
        {"xmlPieces", Limits::xmlPieces},         {"diagnostics", Limits::diagnostics},
        {"partNameBytes", Limits::partNameBytes}, {"packageDepth", Limits::packageDepth},
    };
    const std::string document = textOf(root / "docs/limits.md");
    for (const auto& [name, value] : limits) {
        const std::string row = "| `" + name + "` | " + withThousands(value) + " |";
        EXPECT_NE(document.find(row), std::string::npos) << row;
    }
    for (const std::string& name :
         matches(textOf(root / "host/core/opc/limits.h"), std::regex{R"(inline constexpr [\w:]+ (\w+) =)"}))
        EXPECT_TRUE(limits.contains(name)) << name << " is missing in docs/limits.md";
}
