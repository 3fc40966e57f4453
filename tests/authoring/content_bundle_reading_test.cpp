#include "authoring/content_bundle_reading.h"

#include "authoring/bundle_texts.h"
#include "authoring/example_creation.h"
#include "authoring/path_conversion.h"
#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/text_conversion.h"
#include "tests/authoring/bundle_reading.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using namespace Kelvaris::System;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ContentBundleReading : public testing::Test
{
protected:
    ContentBundleReading()
    {
        Authoring::createExample({Authoring::toFilePath2(folder.write("design/top 100%.kvsch", "top")),
                                  Authoring::toFilePath2(folder.write("design/models/ä.va", "model"))},
                                 Authoring::toFilePath2(bundle), {})
            .value();
    }

    Expected<void, ErrorCode2> unpack(const fs::path& from) const
    {
        return Authoring::unpackContentBundle(Authoring::toFilePath2(from), Authoring::toFilePath2(folder / "out"));
    }

    static Expected<std::vector<FilePath2>, ErrorCode2> targets(const String2& type, const fs::path& from)
    {
        return Authoring::contentBundleTargets(type, Authoring::toFilePath2(from));
    }

    std::vector<std::string> contentOf(const fs::path& from) const
    {
        std::vector<std::string> paths;
        const std::vector<FilePath2> found = targets(contentType, from).value();
        for (const FilePath2& path : found)
            paths.push_back(Authoring::toStdPath(path).string());
        return paths;
    }

    TemporaryFolder folder;
    fs::path bundle = folder / "example.kvbdl.zip";
    String2 contentType = utf16ToUtf8(BundleTexts::contentRelationshipType).value();
};

TEST_F(ContentBundleReading, UnpackWritesEachFileBelowTheDirectory)
{
    unpack(bundle).value();
    EXPECT_THAT(filesBelow(folder / "out"), ElementsAre("content/models/ä.va", "content/top 100%.kvsch"));
    EXPECT_EQ(readFile(folder / "out/content/models/ä.va"), "model");
}

TEST_F(ContentBundleReading, UnpackAnswersTheErrorOfOpening)
{
    const auto unpacked = unpack(folder.write("no package.zip", "x"));
    ASSERT_FALSE(unpacked);
    EXPECT_THAT(text(unpacked.error().message()), HasSubstr("no package.zip"));
    EXPECT_FALSE(fs::exists(folder / "out"));
}

TEST_F(ContentBundleReading, UnpackAnswersTheErrorOfUnpacking)
{
    folder.write("out/content/top 100%.kvsch", "older work");
    const auto unpacked = unpack(bundle);
    ASSERT_FALSE(unpacked);
    EXPECT_THAT(text(unpacked.error().message()), HasSubstr("top 100%.kvsch"));
    EXPECT_EQ(readFile(folder / "out/content/top 100%.kvsch"), "older work");
}

TEST_F(ContentBundleReading, TargetsAreLocalPathsInTheOrderOfTheRelationships)
{
    EXPECT_THAT(contentOf(bundle), ElementsAre("content/top 100%.kvsch", "content/models/ä.va"));
}

// Text that has no scheme and does not begin with "/" is a path as it stands, also where it comes from outside.
TEST_F(ContentBundleReading, ATargetOutsideIsDecodedWhenItIsAUrlAndKeptWhenItIsARelativePath)
{
    EXPECT_THAT(contentOf(fs::path{HOLLERWICK_BROKEN_PACKAGES} / "example-content-on-disk.zip"),
                ElementsAre("content/a.txt", "/tmp/a b.txt", "a%20b.txt"));
}

TEST_F(ContentBundleReading, ATypeWithoutRelationshipsHasNoTargets)
{
    EXPECT_THAT(targets(u8"http://schemas.kelvaris.example/nothing", bundle).value(), IsEmpty());
    EXPECT_THAT(targets({}, bundle).value(), IsEmpty());
}

TEST_F(ContentBundleReading, TargetsAnswerTheErrorOfOpening)
{
    EXPECT_FALSE(targets(contentType, folder / "not there.zip"));
}

TEST_F(ContentBundleReading, TargetsAnswerTheErrorOfRelationshipsThatCannotBeRead)
{
    EXPECT_FALSE(targets(contentType, fs::path{TEST_DATA} / "relationships_not_xml.zip"));
}

TEST_F(ContentBundleReading, OneTargetThatIsNoLocalFileRaises)
{
    EXPECT_THROW((void)targets(contentType, fs::path{TEST_DATA} / "target_on_the_web.zip"),
                 bad_expected_access<ErrorCode2>);
}

} // namespace
