#include "host/core/paths/disk/output_tree.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using Disk::OutputTree;
using IO::OpcPackaging::OpcError;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;
using Destinations = std::vector<OutputTree::Destination>;

OutputTree::Producer producing(std::string text)
{
    return [text = std::move(text)](const Disk::ByteSink& sink) { return sink(bytesOf(text)); };
}

ErrorCode2 refusal(const fs::path& root, Destinations destinations)
{
    const auto tree = OutputTree::plan(filePath(root), std::move(destinations));
    EXPECT_FALSE(tree);
    return tree.error();
}

} // namespace

TEST(OutputTree, WritesFilesBelowTheRootAndMakesTheDirectories)
{
    const TemporaryFolder folder;
    auto tree = OutputTree::plan(filePath(folder.path()), {{"a.txt"}, {"sub dir", "ü", "b.txt"}, {"sub dir", "c"}});
    ASSERT_TRUE(tree) << outcome(tree);
    ASSERT_TRUE(tree->write(1, producing("b")));
    ASSERT_TRUE(tree->write(0, producing("a")));
    ASSERT_TRUE(tree->write(2, producing("")));
    ASSERT_TRUE(tree->keep());
    EXPECT_EQ(listing(folder.path()), (Names{"a.txt", "sub dir/", "sub dir/c", "sub dir/ü/", "sub dir/ü/b.txt"}));
    EXPECT_EQ(readFile(folder / "sub dir/ü/b.txt"), "b");
    EXPECT_EQ(readFile(folder / "sub dir/c"), "");
}

TEST(OutputTree, WritesWhatComesInSeveralPieces)
{
    const TemporaryFolder folder;
    auto tree = OutputTree::plan(filePath(folder.path()), {{"a"}}).value();
    ASSERT_TRUE(tree.write(0, [](const Disk::ByteSink& sink) {
        return sink(bytesOf("one ")).andThen([&] { return sink(bytesOf("two")); });
    }));
    ASSERT_TRUE(tree.keep());
    EXPECT_EQ(readFile(folder / "a"), "one two");
}

TEST(OutputTree, MakesTheRootWithTheDirectoriesAboveIt)
{
    const TemporaryFolder folder;
    auto tree = OutputTree::plan(filePath(folder / "x/y/z"), {{"a"}}).value();
    EXPECT_EQ(listing(folder.path()), Names{}) << "a plan writes nothing";
    ASSERT_TRUE(tree.write(0, producing("a")));
    ASSERT_TRUE(tree.keep());
    EXPECT_EQ(listing(folder.path()), (Names{"x/", "x/y/", "x/y/z/", "x/y/z/a"}));
}

TEST(OutputTree, MakesTheRootWhenThereIsNothingToWrite)
{
    const TemporaryFolder folder;
    auto tree = OutputTree::plan(filePath(folder / "x/"), {}).value();
    ASSERT_TRUE(tree.keep());
    EXPECT_EQ(listing(folder.path()), Names{"x/"});
}

TEST(OutputTree, TheRootMayBeRelative)
{
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    auto tree = OutputTree::plan(filePath("x/y"), {{"a"}}).value();
    EXPECT_TRUE(tree.write(0, producing("a")));
    EXPECT_TRUE(tree.keep());
    fs::current_path(before);
    EXPECT_EQ(listing(folder.path()), (Names{"x/", "x/y/", "x/y/a"}));
}

TEST(OutputTree, TheRootMayBeALink)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "real");
    fs::create_directory_symlink("real", folder / "link");
    auto tree = OutputTree::plan(filePath(folder / "link"), {{"a"}}).value();
    ASSERT_TRUE(tree.write(0, producing("a")));
    ASSERT_TRUE(tree.keep());
    EXPECT_EQ(readFile(folder / "real/a"), "a");
}

TEST(OutputTree, WritesBesideWhatIsThere)
{
    const TemporaryFolder folder;
    folder.write("sub/old", "old");
    auto tree = OutputTree::plan(filePath(folder.path()), {{"sub", "new"}}).value();
    ASSERT_TRUE(tree.write(0, producing("new")));
    ASSERT_TRUE(tree.keep());
    EXPECT_EQ(listing(folder.path()), (Names{"sub/", "sub/new", "sub/old"}));
    EXPECT_EQ(readFile(folder / "sub/old"), "old");
}

TEST(OutputTree, NamesAreWrittenAsTheyAre)
{
    const TemporaryFolder folder;
    const Destinations names{{"a b"},         {"%41"}, {"#?"},        {"+&'\"\\"},  {"日本"}, {"😀"},
                             {"..."},         {"-rf"}, {"e\xcc\x81"}, {"\xc3\xa9"}, {"CON"},  {std::string(255, 'n')},
                             {"line\nbreak"}, {" "},   {"dot."}};
    auto tree = OutputTree::plan(filePath(folder.path()), names).value();
    for (std::size_t i = 0; i < names.size(); ++i)
        ASSERT_TRUE(tree.write(i, producing(std::to_string(i))));
    ASSERT_TRUE(tree.keep());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(readFile(folder / names[i][0]), std::to_string(i));
}

TEST(OutputTree, UnsafeNamesAreRefusedBeforeAnythingIsWritten)
{
    const TemporaryFolder folder;
    const Destinations unsafe{{},
                              {""},
                              {"."},
                              {".."},
                              {"a", "..", "b"},
                              {"..", "b"},
                              {"a", ""},
                              {"a/b"},
                              {"/etc"},
                              {std::string{"a\0b", 3}},
                              {std::string(256, 'n')},
                              {std::string(256, 'n'), "a"},
                              OutputTree::Destination(30, std::string(200, 'n')),
                              OutputTree::Destination(30'000, "n"),
                              {"\xff\xfe"},
                              {"\xed\xa0\x80"}};
    for (const auto& destination : unsafe)
        EXPECT_EQ(refusal(folder / "root", {{"good"}, destination}), code(OpcError::unsafeDestination))
            << testing::PrintToString(destination).substr(0, 300);
    EXPECT_EQ(listing(folder.path()), Names{});
}

TEST(OutputTree, AFileThatExistsIsRefusedAndNamed)
{
    const TemporaryFolder folder;
    folder.write("sub/a", "old");
    const auto error = refusal(folder.path(), {{"new"}, {"sub", "a"}});
    EXPECT_EQ(error, code(OpcError::destinationExists));
    EXPECT_NE(messageOf(error).find("/sub/a"), std::string::npos) << messageOf(error);
    EXPECT_EQ(listing(folder.path()), (Names{"sub/", "sub/a"}));
}

TEST(OutputTree, ADirectoryOrALinkInTheFilesPlaceIsRefused)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "directory");
    fs::create_symlink("nothing", folder / "link");
    EXPECT_EQ(refusal(folder.path(), {{"directory"}}), code(OpcError::destinationExists));
    EXPECT_EQ(refusal(folder.path(), {{"link"}}), code(OpcError::destinationExists));
}

TEST(OutputTree, AFileWhereADirectoryIsNeededIsRefused)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    EXPECT_EQ(refusal(folder.path(), {{"file", "a"}}), code(OpcError::destinationExists));
}

TEST(OutputTree, ALinkBelowTheRootIsNotFollowed)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "outside");
    fs::create_directory(folder / "root");
    fs::create_directory_symlink("../outside", folder / "root/link");
    EXPECT_EQ(refusal(folder / "root", {{"link", "a"}}), code(OpcError::unsafeDestination));
    EXPECT_EQ(listing(folder / "outside"), Names{});
}

TEST(OutputTree, TwoEqualDestinationsAreRefused)
{
    const TemporaryFolder folder;
    const auto error = refusal(folder.path(), {{"x", "a"}, {"b"}, {"x", "a"}});
    EXPECT_EQ(error, code(OpcError::destinationClash));
    EXPECT_NE(messageOf(error).find("/x/a"), std::string::npos) << messageOf(error);
}

TEST(OutputTree, AFileThatIsAnothersDirectoryIsRefusedHoweverFarBelow)
{
    const TemporaryFolder folder;
    EXPECT_EQ(refusal(folder.path(), {{"a", "b", "c"}, {"a"}}), code(OpcError::destinationClash));
    EXPECT_EQ(refusal(folder.path(), {{"a"}, {"a", "b", "c"}, {"a b"}, {"a-"}}), code(OpcError::destinationClash));
}

TEST(OutputTree, NamesThatBeginAlikeDoNotClash)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(OutputTree::plan(filePath(folder.path()), {{"a"}, {"a b"}, {"ab", "c"}, {"A"}, {"abc"}}));
}

TEST(OutputTree, ARootThatIsAFileIsTheSystemsError)
{
    const TemporaryFolder folder;
    EXPECT_EQ(refusal(folder.write("file", "old"), {{"a"}}), systemCode(ENOTDIR));
}

TEST(OutputTree, AnEmptyRootIsTheSystemsError)
{
    EXPECT_EQ(OutputTree::plan(FilePath2{}, {{"a"}}).error(), systemCode(ENOENT));
}

TEST(OutputTree, ManyDirectoriesNeedFewOpenFiles)
{
    const TemporaryFolder folder;
    Destinations destinations;
    for (int i = 0; i < 3000; ++i)
        destinations.push_back({"d" + std::to_string(i), "e", "file"});
    destinations.push_back(OutputTree::Destination(1500, "x"));
    auto tree = OutputTree::plan(filePath(folder.path()), destinations).value();
    for (std::size_t i = 0; i < destinations.size(); ++i) {
        const auto written = tree.write(i, producing("a"));
        ASSERT_TRUE(written) << outcome(written);
    }
}
