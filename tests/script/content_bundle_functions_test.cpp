#include "tests/script/loaded_module.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using namespace Kelvaris;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* contentType = "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content";

class ContentBundleFunctions : public testing::Test
{
protected:
    void SetUp() override
    {
        const auto created = call(
            "_create_example",
            {{folder.write("design/top.kvsch", "top"), folder.write("design/models/ä 1%.va", "")}, {bundle}, {"T"}});
        ASSERT_THAT(created.results, ElementsAre("OK"));
    }

    LoadedModule module;
    TemporaryFolder folder;
    std::string bundle = folder / "example.kvbdl.zip";
    std::string directory = folder / "unpacked";
    LogCapture log;
};

TEST_F(ContentBundleFunctions, UnpackAnswersOkAndWritesTheFiles)
{
    const CallResult result = call("_unpack_content_bundle", {{bundle}, {directory}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre("OK"));
    EXPECT_EQ(readFile(directory + "/content/top.kvsch"), "top");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(ContentBundleFunctions, UnpackOfAFileThatIsNoPackageAnswersFailedWithoutAMessageAndLogsWhy)
{
    const std::string broken = folder.write("broken.zip", "no package");
    const CallResult result = call("_unpack_content_bundle", {{broken}, {directory}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre("FAILED"));
    EXPECT_THAT(log.lines(), ElementsAre(AllOf(StartsWith("error " + broken), HasSubstr("broken.zip"))));
}

TEST_F(ContentBundleFunctions, UnpackOverExistingFilesAnswersFailedAndLogsWhy)
{
    call("_unpack_content_bundle", {{bundle}, {directory}});
    const CallResult result = call("_unpack_content_bundle", {{bundle}, {directory}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, ElementsAre("FAILED"));
    EXPECT_THAT(log.lines(), ElementsAre(StartsWith("error " + directory + "/content/")));
}

TEST_F(ContentBundleFunctions, UnpackWithoutABundleOrADirectoryFails)
{
    EXPECT_EQ(call("_unpack_content_bundle", {{}, {directory}}).status, FUNC_FAILED);
    EXPECT_EQ(call("_unpack_content_bundle", {{bundle}, {}}).status, FUNC_FAILED);
    const std::string line = "error [script/function] _unpack_content_bundle failed: argument index out of range";
    EXPECT_THAT(log.lines(), ElementsAre(line, line));
    EXPECT_FALSE(std::filesystem::exists(directory));
}

TEST_F(ContentBundleFunctions, TargetsAreOneResultEach)
{
    EXPECT_THAT(call("_content_bundle_targets", {{contentType}, {bundle}}).results,
                ElementsAre("content/top.kvsch", "content/models/ä 1%.va"));
}

TEST_F(ContentBundleFunctions, TargetsOfAnotherTypeAreNone)
{
    const CallResult result = call("_content_bundle_targets", {{"http://example.org/none"}, {bundle}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(ContentBundleFunctions, TargetsOfABundleThatCannotBeOpenedAreNoneAndTheLogSaysWhy)
{
    const CallResult result = call("_content_bundle_targets", {{contentType}, {folder / "missing.zip"}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("missing.zip")));
}

TEST_F(ContentBundleFunctions, TargetsOfRelationshipsThatCannotBeReadAreNoneAndTheLogSaysWhy)
{
    const CallResult result =
        call("_content_bundle_targets", {{contentType}, {TEST_DATA "/relationships_not_xml.zip"}});
    EXPECT_EQ(result.status, FUNC_OK);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(),
                ElementsAre(AllOf(StartsWith("error "), HasSubstr("relationships_not_xml.zip: /_rels/.rels"))));
}

TEST_F(ContentBundleFunctions, OneTargetThatIsNoLocalFileFailsTheCall)
{
    const CallResult result = call("_content_bundle_targets", {{contentType}, {TEST_DATA "/target_on_the_web.zip"}});
    EXPECT_EQ(result.status, FUNC_FAILED);
    EXPECT_THAT(result.results, IsEmpty());
    EXPECT_THAT(log.lines(),
                ElementsAre("error [script/function] _content_bundle_targets failed: bad expected access"));
}

TEST_F(ContentBundleFunctions, TargetsWithoutATypeOrABundleFail)
{
    EXPECT_EQ(call("_content_bundle_targets", {{}, {bundle}}).status, FUNC_FAILED);
    EXPECT_EQ(call("_content_bundle_targets", {{contentType}, {}}).status, FUNC_FAILED);
    const std::string line = "error [script/function] _content_bundle_targets failed: argument index out of range";
    EXPECT_THAT(log.lines(), ElementsAre(line, line));
}

} // namespace
