#include "authoring/schematic_hierarchy.h"

#include <gtest/gtest.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string>
#include <string_view>
#include <vector>

namespace {

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

/// The answers, one a line.
std::string identified(const std::vector<std::string_view>& records, std::string_view root = "top.kvsch")
{
    QStringList list;
    for (const std::string_view record : records)
        list.append(text(record));
    return Authoring::identifyDescendants(text(root), list).join(QLatin1Char{'\n'}).toStdString();
}

TEST(IdentifyDescendants, GivesEachSchematicItsParentAndDropsOneWhoseParentIsMissing)
{
    EXPECT_EQ(identified({"a.kvsch;X1", "b.kvsch;X2.X1", "c.kvsch;X9.X8"}), "a.kvsch;top.kvsch\nb.kvsch;a.kvsch");
}

TEST(IdentifyDescendants, GivesNothingForNoRecords)
{
    EXPECT_EQ(identified({}), "");
}

TEST(IdentifyDescendants, PutsParentsFirst)
{
    EXPECT_EQ(identified({"c.kvsch;X3.X2.X1", "b.kvsch;X2.X1", "a.kvsch;X1"}),
              "a.kvsch;top.kvsch\nb.kvsch;a.kvsch\nc.kvsch;b.kvsch");
}

TEST(IdentifyDescendants, ARecordWithoutASemicolonGetsNoAnswer)
{
    EXPECT_EQ(identified({"x.kvsch"}), "");
}

TEST(IdentifyDescendants, TheRootStaysAheadOfRecordsWithoutAName)
{
    EXPECT_EQ(identified({"x.kvsch", "y.kvsch;X1"}), "y.kvsch;top.kvsch");
}

TEST(IdentifyDescendants, TheRootStaysAheadAmongMoreThanThirtyTwoRecords)
{
    std::vector<std::string_view> records(40, "x.kvsch");
    records.push_back("y.kvsch;X1");
    EXPECT_EQ(identified(records), "y.kvsch;top.kvsch");
}

TEST(IdentifyDescendants, NamesOfOneLengthKeepTheirOrderAtAnyNumber)
{
    std::vector<std::string> records;
    std::string expected;
    for (int number = 199; number >= 100; --number) {
        records.push_back(std::to_string(number) + ".kvsch;X" + std::to_string(number));
        expected += (expected.empty() ? "" : "\n") + std::to_string(number) + ".kvsch;top.kvsch";
    }
    EXPECT_EQ(identified({records.begin(), records.end()}), expected);
}

TEST(IdentifyDescendants, IgnoresWhatFollowsASecondSemicolon)
{
    EXPECT_EQ(identified({"a.kvsch;X1;ignored"}), "a.kvsch;top.kvsch");
}

TEST(IdentifyDescendants, AnEmptyPathIsAnsweredAsItIs)
{
    EXPECT_EQ(identified({";X1"}), ";top.kvsch");
}

TEST(IdentifyDescendants, AnEmptyNameBehindASemicolonGetsNoAnswer)
{
    EXPECT_EQ(identified({"a.kvsch;", ""}), "");
}

TEST(IdentifyDescendants, FindsTheFirstOfSeveralParentsOfOneName)
{
    EXPECT_EQ(identified({"a.kvsch;X1", "b.kvsch;X1", "c.kvsch;X2.X1"}),
              "a.kvsch;top.kvsch\nb.kvsch;top.kvsch\nc.kvsch;a.kvsch");
}

TEST(IdentifyDescendants, ComparesNamesExactly)
{
    EXPECT_EQ(identified({"a.kvsch;x1", "b.kvsch;X2.X1", "c.kvsch;X2. x1"}), "a.kvsch;top.kvsch");
}

TEST(IdentifyDescendants, KeepsEmptyComponentsOfAName)
{
    EXPECT_EQ(identified({"a.kvsch;X1", "b.kvsch;X2..X1", "c.kvsch;.X1"}),
              "a.kvsch;top.kvsch\nc.kvsch;a.kvsch\nb.kvsch;c.kvsch")
        << "the parent of X2..X1 is .X1, and the parent of .X1 is X1";
}

TEST(IdentifyDescendants, ASchematicThatIsUsedTwiceIsAnsweredTwice)
{
    EXPECT_EQ(identified({"a.kvsch;X1", "a.kvsch;X2"}), "a.kvsch;top.kvsch\na.kvsch;top.kvsch");
}

TEST(IdentifyDescendants, KeepsLettersBeyondAscii)
{
    EXPECT_EQ(identified({"Übertrager 😀.kvsch;Ü1"}, "höller/top.kvsch"), "Übertrager 😀.kvsch;höller/top.kvsch");
}

} // namespace
