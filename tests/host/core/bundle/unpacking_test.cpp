#include "host/core/bundle/unpacking.h"

#include "kelvaris/system/core_error.h"
#include "tests/host/core/bundle/bundle_making.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class UnpackingTest : public testing::Test
{
protected:
    Expected<void, ErrorCode2> unpack() const
    {
        return ContentBundle::open(toFilePath2(m_folder / "p.zip")).value().unpack(toFilePath2(target()));
    }

    std::filesystem::path target() const { return m_folder / "new design/inner"; }

    /// A package of which these items are content, whatever their names.
    void write(std::initializer_list<const char*> items) const
    {
        std::string relationships;
        int number = 0;
        PackageFile file;
        for (const char* item : items) {
            relationships += "<Relationship Id='r" + std::to_string(++number) + "' Target='/" + item +
                             "' Type='http://schemas.kelvaris.example/package/2025/relationships/content-bundle/"
                             "content'/>";
            file.add(item, std::string{"bytes of "} + item);
        }
        file.addContentTypes().addRelationships(relationships).add("other.txt", "no content");
        file.write(m_folder / "p.zip");
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(UnpackingTest, ContentPartsAloneAreWrittenAtTheirPaths)
{
    write({"content/a.txt", "content/sub/b.txt", "c.txt"});
    ASSERT_TRUE(unpack());
    EXPECT_THAT(filesBelow(target()), ElementsAre("c.txt", "content/a.txt", "content/sub/b.txt"));
    EXPECT_EQ(readFile(target() / "content/sub/b.txt"), "bytes of content/sub/b.txt");
}

TEST_F(UnpackingTest, NamesArePercentDecoded)
{
    write({"content/a%20b%25%23%3F.txt", "content/gr%C3%B6%C3%9Fe.txt"});
    ASSERT_TRUE(unpack());
    EXPECT_THAT(filesBelow(target()), ElementsAre("content/a b%#?.txt", "content/größe.txt"));
}

TEST_F(UnpackingTest, ABundleWithoutContentMakesTheDirectory)
{
    write({});
    ASSERT_TRUE(unpack());
    EXPECT_TRUE(std::filesystem::is_directory(target()));
    EXPECT_THAT(filesBelow(target()), IsEmpty());
}

TEST_F(UnpackingTest, APartOfSeveralRelationshipsIsWrittenOnce)
{
    write({"content/a.txt"});
    auto bundle = ContentBundle::open(toFilePath2(m_folder / "p.zip")).value();
    const String2 type = (*bundle.contentRelationships().value().begin()).type();
    ASSERT_TRUE(
        bundle.package().createRelationship(OpcPackagePartUri{L"/CONTENT/a.txt"}, OpcTargetMode::internal, type));
    ASSERT_TRUE(bundle.unpack(toFilePath2(target())));
    EXPECT_THAT(filesBelow(target()), ElementsAre("content/a.txt"));
}

TEST_F(UnpackingTest, NothingIsWrittenWhenADestinationExistsAndItIsNamed)
{
    write({"content/a.txt", "content/b.txt"});
    m_folder.write("new design/inner/content/b.txt", "my own work");
    const auto unpacked = unpack();
    ASSERT_FALSE(unpacked);
    EXPECT_EQ(unpacked.error(), code(OpcError::destinationExists));
    EXPECT_THAT(toStdString(unpacked.error().message()), HasSubstr("content/b.txt"));
    EXPECT_THAT(filesBelow(target()), ElementsAre("content/b.txt"));
    EXPECT_EQ(readFile(target() / "content/b.txt"), "my own work");
}

TEST_F(UnpackingTest, FilesThatStandElsewhereInTheDirectoryStay)
{
    write({"content/a.txt"});
    m_folder.write("new design/inner/content/mine.txt", "mine");
    ASSERT_TRUE(unpack());
    EXPECT_THAT(filesBelow(target()), ElementsAre("content/a.txt", "content/mine.txt"));
}

TEST_F(UnpackingTest, NoLinkIsFollowedOutOfTheDirectory)
{
    write({"content/a.txt"});
    std::filesystem::create_directories(target());
    std::filesystem::create_directories(m_folder / "elsewhere");
    std::filesystem::create_directory_symlink(m_folder / "elsewhere", target() / "content");
    EXPECT_EQ(unpack().error(), code(OpcError::unsafeDestination));
    EXPECT_THAT(filesBelow(m_folder / "elsewhere"), IsEmpty());
}

TEST_F(UnpackingTest, NamesThatThePlatformCannotHoldAreRefused)
{
    for (const char* name : {"content/%00.txt", "content/%FF.txt"}) {
        write({"content/fine.txt", name});
        EXPECT_EQ(unpack().error(), code(OpcError::unsafeDestination)) << name;
        EXPECT_FALSE(std::filesystem::exists(target()));
    }
    write({("content/" + std::string(300, 'n') + ".txt").c_str()});
    EXPECT_EQ(unpack().error(), code(OpcError::unsafeDestination));
}

TEST_F(UnpackingTest, ContentThatIsNotThereIsNotPassedOver)
{
    PackageFile file;
    file.addContentTypes().addRelationships(
        "<Relationship Id='r' Target='gone.txt' "
        "Type='http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content'/>");
    file.write(m_folder / "p.zip");
    const auto unpacked = unpack();
    EXPECT_EQ(unpacked.error(), code(OpcError::noSuchPart));
    EXPECT_THAT(toStdString(unpacked.error().message()), HasSubstr("gone.txt"));
    EXPECT_FALSE(std::filesystem::exists(target()));
}

TEST_F(UnpackingTest, AFailureInTheMiddleRemovesWhatWasWritten)
{
    write({"content/a.txt", "content/sub/b.txt"});
    std::string bytes = readFile(m_folder / "p.zip");
    bytes.replace(bytes.find("bytes of content/sub"), 5, "BYTES");
    m_folder.write("p.zip", bytes);
    m_folder.write("new design/inner/content/mine.txt", "mine");
    EXPECT_EQ(unpack().error(), code(OpcError::checksumMismatch));
    EXPECT_THAT(filesBelow(target()), ElementsAre("content/mine.txt"));
    EXPECT_FALSE(std::filesystem::exists(target() / "content/sub"));
}

TEST_F(UnpackingTest, ThePrimaryFileResolvesAgainstTheDirectory)
{
    auto example = ExampleBundle::open(toFilePath2(writeExample(m_folder, "e.zip", "t"))).value();
    ASSERT_TRUE(example.unpack(toFilePath2(target())));
    FilePath2 path = toFilePath2(target());
    path /= example.primaryFileRelationship()
                .value()
                .targetUri()
                .value()
                .toLocalFile(UrlLocalFileOptions::relativePath)
                .value();
    EXPECT_FALSE(path != toFilePath2(target() / "content/amp.kvsch"));
}

TEST_F(UnpackingTest, ALargePartIsUnpackedWhole)
{
    std::string large;
    for (int line = 0; line < 400'000; ++line)
        large += std::to_string(line) + '\n';
    auto example = ExampleBundle::create().value();
    addText(example, m_folder, "large.txt", large);
    ASSERT_TRUE(example.writeToFile(toFilePath2(m_folder / "p.zip")));
    ASSERT_TRUE(unpack());
    EXPECT_EQ(readFile(target() / "content/large.txt"), large);
}
