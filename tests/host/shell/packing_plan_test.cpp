#include "host/shell/packing_plan.h"

#include "host/shell/exit_status.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace HostShell;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::vector<std::string> partNames(const PackingPlan& plan)
{
    std::vector<std::string> names;
    for (const PlannedPart& part : plan.parts)
        names.push_back(part.part);
    return names;
}

CommandLine lineFor(const std::vector<std::filesystem::path>& files)
{
    CommandLine line;
    for (const std::filesystem::path& file : files)
        line.arguments.push_back(file.string());
    line.output = "/tmp/nothing-is-there/a.zip";
    return line;
}

} // namespace

TEST(PackingPlan, PutsFilesAtTheirPlacesBelowTheFirstOne)
{
    const TemporaryFolder folder;
    const auto plan = planExample(lineFor({folder.write("d/a b.kvsch", "1"), folder.write("d/models/ä.va", "22")}));
    ASSERT_TRUE(plan);
    EXPECT_THAT(partNames(*plan), ElementsAre("/content/a%20b.kvsch", "/content/models/%C3%A4.va"));
    EXPECT_EQ(plan->size(), 3U);
}

TEST(PackingPlan, TakesTheOneSchematicAtTheTopOfADirectoryForThePrimaryFile)
{
    const TemporaryFolder folder;
    for (const char* name : {"d/a.html", "d/top.kvsch", "d/below/stage.kvsch", "d/.git/config", "d/.hidden"})
        folder.write(name, "x");
    const auto plan = planExample(lineFor({folder / "d"}));
    ASSERT_TRUE(plan);
    EXPECT_THAT(partNames(*plan), ElementsAre("/content/top.kvsch", "/content/a.html", "/content/below/stage.kvsch"));
}

TEST(PackingPlan, TakesAFileOnceThatIsNamedBesideItsDirectory)
{
    const TemporaryFolder folder;
    folder.write("d/z.kvsch", "x");
    folder.write("d/below/stage.kvsch", "x");
    const auto plan = planExample(lineFor({folder / "d/z.kvsch", folder / "d/../d", folder / "d/below"}));
    ASSERT_TRUE(plan) << plan.error().sentence;
    EXPECT_THAT(partNames(*plan), ElementsAre("/content/z.kvsch", "/content/below/stage.kvsch"));
}

TEST(PackingPlan, RefusesALinkToAFileThatIsPackedTooInsteadOfLosingIt)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink(folder.write("d/a.kvsch", "x"), folder / "d/link.kvsch");
    const auto plan = planExample(lineFor({folder / "d/a.kvsch", folder / "d/link.kvsch"}));
    ASSERT_FALSE(plan);
    EXPECT_THAT(plan.error().sentence, HasSubstr("link.kvsch: the package has a part of this name already"));
}

TEST(PackingPlan, RefusesAKeywordThatWouldBecomeTwo)
{
    const TemporaryFolder folder;
    CommandLine line = lineFor({folder.write("a.kvsch", "x")});
    line.keywords = {"filter", "low; pass"};
    EXPECT_EQ(planExample(line).error().status, ExitStatus::usage);
    EXPECT_THAT(planExample(line).error().sentence, HasSubstr("\"low; pass\" holds \";\""));
}

TEST(PackingPlan, AsksWhichFileIsThePrimaryOneWhenThatIsNotClear)
{
    const TemporaryFolder folder;
    folder.write("d/a.kvsch", "x");
    folder.write("d/b.kvsch", "x");
    CommandLine line = lineFor({folder / "d"});
    EXPECT_EQ(planExample(line).error().status, ExitStatus::usage);
    EXPECT_THAT(planExample(line).error().sentence, HasSubstr("--primary"));
    line.primary = (folder / "d/b.kvsch").string();
    EXPECT_THAT(partNames(planExample(line).value()), ElementsAre("/content/b.kvsch", "/content/a.kvsch"));
}

TEST(PackingPlan, RefusesAFileThatCannotBeRead)
{
    const TemporaryFolder folder;
    const auto plan = planExample(lineFor({folder.write("a.kvsch", ""), folder / "none.va"}));
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error().status, ExitStatus::badInput);
    EXPECT_THAT(plan.error().sentence,
                HasSubstr("none.va: cannot be opened: No such file or directory; check the path"));
}

TEST(PackingPlan, RefusesAFileOutsideTheDirectoryOfTheFirst)
{
    const TemporaryFolder folder;
    const auto plan = planExample(lineFor({folder.write("d/a.kvsch", ""), folder.write("b.va", "")}));
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error().status, ExitStatus::badInput);
}

TEST(PackingPlan, RefusesTwoFilesThatWouldBeOnePart)
{
    const TemporaryFolder folder;
    const auto plan =
        planExample(lineFor({folder.write("a.kvsch", ""), folder.write("b.va", ""), folder.write("B.va", "")}));
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error().status, ExitStatus::badInput);
    EXPECT_THAT(plan.error().sentence, HasSubstr("B.va: the package has a part of this name already"));
}

TEST(PackingPlan, RefusesAnOutputThatExistsUnlessForced)
{
    const TemporaryFolder folder;
    CommandLine line = lineFor({folder.write("a.kvsch", "")});
    line.output = folder.write("out.zip", "old").string();
    EXPECT_EQ(planExample(line).error().status, ExitStatus::outputExists);
    line.force = true;
    EXPECT_TRUE(planExample(line));
}

TEST(PackingPlan, RefusesToPutIntoABarrelWhatIsNoExample)
{
    const TemporaryFolder folder;
    const auto plan = planBarrel(lineFor({folder.write("a.kvbdl.zip", "no package")}));
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error().status, ExitStatus::badInput);
    EXPECT_THAT(plan.error().sentence, HasSubstr("a.kvbdl.zip: not a ZIP file"));
}

TEST(PackingPlan, RefusesADirectoryWithNothingInIt)
{
    const TemporaryFolder folder;
    EXPECT_EQ(planBarrel(lineFor({folder.path()})).error().status, ExitStatus::badInput);
}

TEST(PackingPlan, NamesAnOutputLikeItsPrimaryFile)
{
    EXPECT_EQ(stemOf("a/amplifier.kvbdl.zip"), "amplifier");
    EXPECT_EQ(stemOf("amplifier.kvsch"), "amplifier");
    EXPECT_EQ(stemOf("filters.kvexs"), "filters");
    EXPECT_EQ(stemOf(".zip"), ".zip");
}
