#include "tests/script/loaded_module.h"
#include "tests/script/recorded_call.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* identify = "_schematic_bundle_helper_identify_descedants";

class SchematicBundleFunctions : public testing::Test
{
protected:
    static std::string create() { return call("_schematic_bundle_create", {}).results.at(0); }

    LoadedModule module;
    TemporaryFolder folder;
    std::string top = folder.write("top.kvsch", "top");
    std::string stage = folder.write("stages/Übertrager 50%.kvsch", "stage");
    std::string output = folder / "bundle.zip";
    LogCapture log;
};

TEST_F(SchematicBundleFunctions, AScriptBuildsABundleWithTheTextsThatItGetsBack)
{
    const std::string id = create();
    const std::string topUri = call("_schematic_bundle_set_root", {{top}, {id}}).results.at(0);
    const std::string stageUri =
        call("_schematic_bundle_add_descendant", {{stage}, {top}, {topUri}, {id}}).results.at(0);
    EXPECT_EQ(topUri, "/schematics/top.kvsch");
    EXPECT_EQ(stageUri, "/schematics/stages/%C3%9Cbertrager%2050%25.kvsch");
    // the text of a name with percent signs finds its part again
    const std::string deeper = folder.write("deeper.kvsch", "deeper");
    EXPECT_EQ(call("_schematic_bundle_add_descendant", {{deeper}, {stage}, {stageUri}, {id}}).status, FUNC_OK);
    EXPECT_THAT(call("_schematic_bundle_write", {{output}, {id}}).results, ElementsAre("OK"));
    EXPECT_TRUE(std::filesystem::exists(output));
    EXPECT_THAT(call("_schematic_bundle_close", {{id}}).results, ElementsAre("OK"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(SchematicBundleFunctions, IdentifiersDifferAndClosingOneLeavesTheOtherUsable)
{
    const std::string first = create();
    const std::string second = create();
    EXPECT_NE(first, second);
    call("_schematic_bundle_close", {{first}});
    EXPECT_EQ(call("_schematic_bundle_set_root", {{top}, {second}}).status, FUNC_OK);
    EXPECT_EQ(call("_schematic_bundle_set_root", {{top}, {first}}).status, FUNC_FAILED);
}

TEST_F(SchematicBundleFunctions, AnUnknownIdentifierFailsAndIsInTheLog)
{
    const CallResult result = call("_schematic_bundle_set_root", {{top}, {"no such id"}});
    EXPECT_EQ(result.status, FUNC_FAILED);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(),
                ElementsAre(AllOf(HasSubstr("_schematic_bundle_set_root failed: "), HasSubstr("no such id"))));
}

TEST_F(SchematicBundleFunctions, AFailureOfTheBundleIsABadAccessInTheLogAndNoResult)
{
    const std::string id = create();
    const CallResult result = call("_schematic_bundle_set_root", {{folder / "missing.kvsch"}, {id}});
    EXPECT_EQ(result.status, FUNC_FAILED);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(),
                ElementsAre("error [script/function] _schematic_bundle_set_root failed: bad expected access"));
}

TEST_F(SchematicBundleFunctions, AParentPartThatIsUnknownFailsTheCall)
{
    const std::string id = create();
    call("_schematic_bundle_set_root", {{top}, {id}});
    EXPECT_EQ(call("_schematic_bundle_add_descendant", {{stage}, {top}, {"/unknown"}, {id}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(),
                ElementsAre("error [script/function] _schematic_bundle_add_descendant failed: bad expected access"));
}

TEST_F(SchematicBundleFunctions, WriteAnswersOkAlsoWhenTheFileCannotBeWritten)
{
    const CallResult result = call("_schematic_bundle_write", {{folder / "not there/b.zip"}, {create()}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre("OK"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(SchematicBundleFunctions, CloseOfAnyTextAnswersOk)
{
    EXPECT_THAT(call("_schematic_bundle_close", {{"no bundle"}}).results, ElementsAre("OK"));
    EXPECT_THAT(call("_schematic_bundle_close", {{""}}).results, ElementsAre("OK"));
}

TEST_F(SchematicBundleFunctions, ClearAllAnswersOkOnAnEmptyTableAndDropsWhatIsOpen)
{
    EXPECT_THAT(call("_schematic_bundle_clear_all", {}).results, ElementsAre("OK"));
    const std::string id = create();
    EXPECT_THAT(call("_schematic_bundle_clear_all", {}).results, ElementsAre("OK"));
    EXPECT_EQ(call("_schematic_bundle_write", {{output}, {id}}).status, FUNC_FAILED);
}

TEST_F(SchematicBundleFunctions, AMissingArgumentFailsBeforeALaterOneIsLookedAt)
{
    const RecordedArgs args{{{}, {"id"}}};
    RecordedResult result;
    const FuncEntry entry = FunctionRegistry::instance().find("_schematic_bundle_set_root")->entry;
    EXPECT_EQ(entry(args, &result, YRef<MessageHandler>{}), FUNC_FAILED);
    EXPECT_THAT(args.asked, ElementsAre("strings 0", "count 0"));
    EXPECT_THAT(log.lines(),
                ElementsAre("error [script/function] _schematic_bundle_set_root failed: argument index out of range"));
}

TEST_F(SchematicBundleFunctions, ArgumentsAreReadInTheOrderOfTheirPositions)
{
    const RecordedArgs args{{{"a"}, {"b"}, {"c"}, {}}};
    RecordedResult result;
    FunctionRegistry::instance().find("_schematic_bundle_add_descendant")->entry(args, &result, YRef<MessageHandler>{});
    EXPECT_THAT(args.asked, ElementsAre("strings 0", "count 0", "strings 1", "count 1", "strings 2", "count 2",
                                        "strings 3", "count 3"));
}

TEST_F(SchematicBundleFunctions, IdentifyDescendantsAnswersParentsFirst)
{
    const CallResult result = call(identify, {{"top.kvsch"}, {"b.kvsch;X2.X1", "c.kvsch;X9.X8", "a.kvsch;X1"}});
    EXPECT_THAT(result.results, ElementsAre("a.kvsch;top.kvsch", "b.kvsch;a.kvsch"));
}

TEST_F(SchematicBundleFunctions, IdentifyDescendantsOfNoneAllocatesNoResults)
{
    const RecordedArgs args{{{"top.kvsch"}, {}}};
    RecordedResult result;
    EXPECT_EQ(FunctionRegistry::instance().find(identify)->entry(args, &result, YRef<MessageHandler>{}), FUNC_OK);
    EXPECT_THAT(result.allocated, ElementsAre(0));
}

TEST_F(SchematicBundleFunctions, IdentifyDescendantsWithoutARootFails)
{
    EXPECT_EQ(call(identify, {{}, {"a.kvsch;X1"}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("argument index out of range")));
}

} // namespace
