#include "kelvaris/system/application.h"
#include "tests/script/loaded_module.h"
#include "tests/script/recorded_call.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

using namespace Kelvaris;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PathFunctions : public testing::Test
{
protected:
    LoadedModule module;
    LogCapture log;
};

TEST_F(PathFunctions, FilenameGivesTheLastComponentByTheGrammarOfWindows)
{
    EXPECT_THAT(call("_filename", {{"C:\\a\\b"}}).results, ElementsAre("b"));
    EXPECT_THAT(call("_filename", {{"C:\\"}}).results, ElementsAre(""));
    EXPECT_THAT(call("_filename", {{"\\\\server\\share\\Übertrager 😀"}}).results, ElementsAre("Übertrager 😀"));
}

TEST_F(PathFunctions, ParentPathGivesThePathWithoutItByTheGrammarOfWindows)
{
    EXPECT_THAT(call("_parent_path", {{"C:\\a\\b"}}).results, ElementsAre("C:\\a"));
    EXPECT_THAT(call("_parent_path", {{"a//b"}}).results, ElementsAre("a"));
    EXPECT_THAT(call("_parent_path", {{"a"}}).results, ElementsAre(""));
}

TEST_F(PathFunctions, FilenameOfAnEmptyArrayFailsWithALineThatSaysSo)
{
    const CallResult result = call("_filename", {{}});
    EXPECT_EQ(result.status, FUNC_FAILED);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _filename failed: argument index out of range"));
}

TEST_F(PathFunctions, ParentPathOfAnEmptyArrayFailsWithALineThatSaysSo)
{
    EXPECT_EQ(call("_parent_path", {{}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre("error [script/function] _parent_path failed: argument index out of range"));
}

TEST_F(PathFunctions, ATextThatIsNoUtf8FailsInsteadOfGivingAnotherName)
{
    EXPECT_EQ(call("_filename", {{"a/\xff"}}).status, FUNC_FAILED);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("_filename failed: ")));
}

TEST_F(PathFunctions, TemporaryDirectoryOutlivesTheCall)
{
    const CallResult result = call("_create_temporary_directory", {});
    ASSERT_EQ(result.results.size(), 1U);
    EXPECT_TRUE(std::filesystem::remove(result.results[0])) << "it is there, and empty";
}

TEST_F(PathFunctions, TemporaryDirectoryThatCannotBeMadeGivesNoResultAndNoLine)
{
    const TemporaryFolder folder;
    setenv("TMPDIR", (folder / "not there").c_str(), 1);
    const CallResult result = call("_create_temporary_directory", {});
    unsetenv("TMPDIR");
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(PathFunctions, BundleTestReadsNoArgumentAndAllocatesNoResult)
{
    const RecordedArgs args{{{"anything"}}};
    RecordedResult result;
    const FuncEntry entry = FunctionRegistry::instance().find("_bundle_test")->entry;
    EXPECT_EQ(entry(args, &result, YRef<MessageHandler>{}), FUNC_OK);
    EXPECT_THAT(args.asked, IsEmpty());
    EXPECT_THAT(result.allocated, IsEmpty());
}

TEST_F(PathFunctions, BundleTestIsLoggedLikeAnyOtherFunction)
{
    System::Application::instance()->settings().setLogScriptCalls(true);
    call("_bundle_test", {{"anything"}});
    System::Application::instance()->settings().setLogScriptCalls(false);
    EXPECT_THAT(log.lines(), ElementsAre("diagnostic [script] function started: _bundle_test",
                                         "diagnostic [script] function started: _bundle_test"));
}

} // namespace
