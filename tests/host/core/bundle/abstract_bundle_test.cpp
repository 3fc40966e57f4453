#include "kelvaris/system/io/bundle/abstract_bundle.h"

#include "tests/host/core/bundle/bundle_making.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::HasSubstr;

TEST(AbstractBundle, WriteToFileOverTheOpenedFileKeepsWhatItHolds)
{
    const TemporaryFolder folder;
    const auto path = writeExample(folder, "e.kvbdl.zip", "old");
    auto example = ExampleBundle::open(toFilePath2(path)).value();
    ASSERT_TRUE(example.setTitle(u8"new"));
    ASSERT_TRUE(example.writeToFile(toFilePath2(path)));
    const auto read = ExampleBundle::open(toFilePath2(path)).value();
    EXPECT_EQ(read.title().value(), String2{u8"new"});
    EXPECT_EQ(bytesOf(read.package().part(OpcPackagePartUri{L"/content/amp.kvsch"}).value()), "schematic of old");
    EXPECT_EQ(filesBelow(folder.path()), (std::vector<std::string>{"e.kvbdl.zip", "sources/text"}));
}

TEST(AbstractBundle, WriteToFileTwiceGivesEqualBytes)
{
    const TemporaryFolder folder;
    auto example = ExampleBundle::open(toFilePath2(writeExample(folder, "e.kvbdl.zip", "old"))).value();
    ASSERT_TRUE(example.setTitle(u8"new"));
    ASSERT_TRUE(example.writeToFile(toFilePath2(folder / "1.zip")));
    ASSERT_TRUE(example.writeToFile(toFilePath2(folder / "2.zip")));
    EXPECT_EQ(readFile(folder / "1.zip"), readFile(folder / "2.zip"));
}

TEST(AbstractBundle, WriteToFileWithoutAnEditGivesTheSameBytes)
{
    const TemporaryFolder folder;
    const auto path = writeExample(folder, "e.kvbdl.zip", "title");
    auto example = ExampleBundle::open(toFilePath2(path)).value();
    ASSERT_TRUE(example.setTitle(u8"title"));
    ASSERT_TRUE(example.setPrimaryFile(OpcPackagePartUri{L"/CONTENT/amp.kvsch"}));
    ASSERT_TRUE(example.setManufacturer({}));
    ASSERT_TRUE(example.writeToFile(toFilePath2(folder / "1.zip")));
    EXPECT_EQ(readFile(folder / "1.zip"), readFile(path));
}

TEST(AbstractBundle, AFailedWriteNamesThePathAndLeavesEverythingAsItWas)
{
    const TemporaryFolder folder;
    const auto path = writeExample(folder, "e.kvbdl.zip", "old");
    const std::string before = readFile(path);
    auto example = ExampleBundle::open(toFilePath2(path)).value();
    ASSERT_TRUE(example.setTitle(u8"new"));
    std::filesystem::create_directories(folder / "a directory");
    const auto written = example.writeToFile(toFilePath2(folder / "a directory"));
    ASSERT_FALSE(written);
    EXPECT_THAT(toStdString(written.error().message()), HasSubstr("a directory"));
    EXPECT_EQ(readFile(path), before);
    EXPECT_EQ(example.title().value(), String2{u8"new"});
    EXPECT_TRUE(example.writeToFile(toFilePath2(path)));
}

TEST(AbstractBundle, PartFollowsARelationship)
{
    const TemporaryFolder folder;
    const auto example = ExampleBundle::open(toFilePath2(writeExample(folder, "e.kvbdl.zip", "t"))).value();
    EXPECT_EQ(nameOf(example.part(example.primaryFileRelationship().value()).value()), "/content/amp.kvsch");
}

TEST(AbstractBundle, TextsThatWereRemovedAreErrors)
{
    const TemporaryFolder folder;
    auto example = ExampleBundle::open(toFilePath2(writeExample(folder, "e.kvbdl.zip", "t"))).value();
    ASSERT_TRUE(example.setTitle({}));
    EXPECT_EQ(example.title().error(), code(OpcError::propertyNotSet));
    EXPECT_EQ(example.description().error(), code(OpcError::propertyNotSet));
    EXPECT_EQ(example.keywords().error(), code(OpcError::propertyNotSet));
}

TEST(AbstractBundle, AMovedBundleGoesOnWorking)
{
    const TemporaryFolder folder;
    auto example = ExampleBundle::open(toFilePath2(writeExample(folder, "e.kvbdl.zip", "t"))).value();
    ExampleBundle moved{std::move(example)};
    example = ExampleBundle::create().value();
    EXPECT_EQ(moved.title().value(), String2{u8"t"});
    moved = std::move(example);
    EXPECT_FALSE(moved.title());
}
