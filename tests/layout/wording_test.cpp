#include "tests/layout/source_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string lowerCase(std::string_view text)
{
    std::string lower{text};
    std::ranges::transform(lower, lower.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return lower;
}

bool isWordCharacter(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

/// Whether `lower` holds `word` at the beginning of a word, with a digit right behind it.
bool numbers(std::string_view lower, std::string_view word)
{
    for (std::size_t at = lower.find(word); at != std::string_view::npos; at = lower.find(word, at + 1)) {
        const std::size_t behind = at + word.size();
        const bool startsWord = at == 0 || !isWordCharacter(lower[at - 1]);
        if (startsWord && behind < lower.size() && std::isdigit(static_cast<unsigned char>(lower[behind])) != 0)
            return true;
    }
    return false;
}

/// Words that point to papers and places which readers of the project do not have. Each is put together here, so that
/// this file passes its own test.
bool pointsElsewhere(std::string_view line)
{
    const std::string lower = lowerCase(line);
    for (const std::string& word : {std::string{"speci"} + "fication", std::string{"spec"} + ".md",
                                    std::string{"design"} + ".md", std::string{"ecma"} + "-376"}) {
        if (lower.find(word) != std::string::npos)
            return true;
    }
    return numbers(lower, std::string{"par"} + "t ") || numbers(lower, std::string{"iss"} + "ue ") ||
           numbers(lower, std::string{"iss"} + "ue #");
}

/// A path of the machine on which somebody worked.
bool namesAMachine(std::string_view line)
{
    for (const std::string& place : {std::string{"/wo"} + "rk/", std::string{"/ro"} + "ot/"}) {
        if (line.find(place) != std::string_view::npos)
            return true;
    }
    // a checkout right below the root, "/src", is named like folders of any project
    const std::filesystem::path checkout = SourceFiles::root();
    if (checkout.parent_path() == checkout.root_path())
        return false;
    return line.find(checkout.string() + "/") != std::string_view::npos;
}

/// "file:line: text" for each line of a tracked text file that `isForbidden`.
std::vector<std::string> offences(const std::vector<std::string>& paths, bool (*isForbidden)(std::string_view))
{
    std::vector<std::string> found;
    for (const std::string& path : paths) {
        if (isForbidden(path))
            found.push_back(path);
        int number = 0;
        for (const std::string& line : SourceFiles::lines(path)) {
            ++number;
            if (isForbidden(line))
                found.push_back(path + ":" + std::to_string(number) + ": " + line);
        }
    }
    return found;
}

using Offences = std::vector<std::string>;

} // namespace

TEST(Wording, NoFilePointsToAPaperThatReadersDoNotHave)
{
    const auto paths = SourceFiles::tracked();
    if (!paths)
        GTEST_SKIP() << "no git, or no checkout";
    EXPECT_EQ(offences(*paths, pointsElsewhere), Offences{});
}

TEST(Wording, NoFileNamesAPlaceOnAMachine)
{
    const auto paths = SourceFiles::tracked();
    if (!paths)
        GTEST_SKIP() << "no git, or no checkout";
    EXPECT_EQ(offences(*paths, namesAMachine), Offences{});
}

TEST(Wording, FindsTheWordsInAnyCase)
{
    EXPECT_TRUE(pointsElsewhere(std::string{"as the Speci"} + "fication says"));
    EXPECT_TRUE(pointsElsewhere(std::string{"// see Par"} + "t 4.3"));
    EXPECT_TRUE(pointsElsewhere(std::string{"(par"} + "t 1)"));
    EXPECT_TRUE(pointsElsewhere(std::string{"Iss"} + "ue #12"));
    EXPECT_TRUE(namesAMachine(std::string{"see /wo"} + "rk/notes"));
}

TEST(Wording, LeavesOrdinaryWordsAlone)
{
    EXPECT_FALSE(pointsElsewhere("a part of a package, parts 1 to 3, counterpart 2"));
    EXPECT_FALSE(pointsElsewhere("special, specific, spectrum; issue a warning"));
    EXPECT_FALSE(namesAMachine("the folder work/ and http://kelvaris.example/worker/"));
}
