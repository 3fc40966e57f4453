#include "host/core/paths/disk/faults.h"
#include "host/core/paths/disk/output_tree.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cerrno>

using namespace Kelvaris::System;
using Disk::OutputTree;
using IO::OpcPackaging::OpcError;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

OutputTree::Producer producing(std::string text)
{
    return [text = std::move(text)](const Disk::ByteSink& sink) { return sink(bytesOf(text)); };
}

Expected<void, ErrorCode2> unpack(const fs::path& root)
{
    auto tree = OutputTree::plan(filePath(root), {{"a"}, {"sub", "b"}, {"sub", "deep", "c"}});
    if (!tree)
        return tree.error();
    return tree->write(0, producing("a"))
        .andThen([&] { return tree->write(1, producing("b")); })
        .andThen([&] { return tree->write(2, producing("c")); })
        .andThen([&] { return tree->keep(); });
}

} // namespace

TEST(OutputTreeFailure, WithoutKeepExactlyWhatWasMadeIsRemoved)
{
    const TemporaryFolder folder;
    folder.write("root/old/file", "old");
    {
        auto tree = OutputTree::plan(filePath(folder / "root"), {{"a"}, {"old", "b"}, {"new", "deep", "c"}}).value();
        for (std::size_t i = 0; i < 3; ++i)
            ASSERT_TRUE(tree.write(i, producing("x")));
        EXPECT_EQ(listing(folder / "root").size(), 7U);
    }
    EXPECT_EQ(listing(folder / "root"), (Names{"old/", "old/file"}));
    EXPECT_EQ(readFile(folder / "root/old/file"), "old");
}

TEST(OutputTreeFailure, ARootThatWasMadeIsRemovedWithTheDirectoriesAboveIt)
{
    const TemporaryFolder folder;
    folder.write("x/old", "old");
    {
        auto tree = OutputTree::plan(filePath(folder / "x/y/z"), {{"a"}}).value();
        ASSERT_TRUE(tree.write(0, producing("x")));
    }
    EXPECT_EQ(listing(folder.path()), (Names{"x/", "x/old"}));
}

TEST(OutputTreeFailure, AProducersErrorIsHandedOnAndItsFileRemoved)
{
    const TemporaryFolder folder;
    {
        auto tree = OutputTree::plan(filePath(folder.path()), {{"a"}, {"b"}}).value();
        ASSERT_TRUE(tree.write(0, producing("a")));
        const auto written = tree.write(1, [](const Disk::ByteSink& sink) -> Expected<void, ErrorCode2> {
            (void)sink(bytesOf("half")); // the error below is what counts
            return code(OpcError::checksumMismatch);
        });
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error(), code(OpcError::checksumMismatch));
    }
    EXPECT_EQ(listing(folder.path()), Names{});
}

TEST(OutputTreeFailure, AFileThatAppearsAfterTheCheckIsNotOverwrittenAndStays)
{
    const TemporaryFolder folder;
    {
        auto tree = OutputTree::plan(filePath(folder.path()), {{"a"}, {"sub", "b"}}).value();
        ASSERT_TRUE(tree.write(0, producing("a")));
        folder.write("sub/b", "theirs");
        const auto written = tree.write(1, producing("ours"));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error(), code(OpcError::destinationExists));
    }
    EXPECT_EQ(listing(folder.path()), (Names{"sub/", "sub/b"}));
    EXPECT_EQ(readFile(folder / "sub/b"), "theirs");
}

TEST(OutputTreeFailure, ALinkThatAppearsAfterTheCheckIsNotFollowed)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "outside");
    fs::create_directory(folder / "root");
    auto tree = OutputTree::plan(filePath(folder / "root"), {{"sub", "b"}, {"c"}}).value();
    fs::create_directory_symlink("../outside", folder / "root/sub");
    fs::create_symlink("../outside/c", folder / "root/c");
    EXPECT_EQ(tree.write(0, producing("b")).error(), code(OpcError::unsafeDestination));
    EXPECT_EQ(tree.write(1, producing("c")).error(), code(OpcError::destinationExists));
    EXPECT_EQ(listing(folder / "outside"), Names{});
}

TEST(OutputTreeFailure, AFileThatSomebodyElsePutBesideOursKeepsItsDirectory)
{
    const TemporaryFolder folder;
    {
        auto tree = OutputTree::plan(filePath(folder.path()), {{"sub", "b"}}).value();
        ASSERT_TRUE(tree.write(0, producing("b")));
        folder.write("sub/theirs", "theirs");
    }
    EXPECT_EQ(listing(folder.path()), (Names{"sub/", "sub/theirs"}));
}

TEST(OutputTreeFailure, AFullDiskIsAnErrorThatNamesTheFileAndLeavesNothing)
{
    const TemporaryFolder folder;
    EXPECT_EQ(inChild([&] {
                  const rlimit limit{1000, 1000};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  auto tree = OutputTree::plan(filePath(folder / "root"), {{"a"}, {"b"}}).value();
                  const auto written = tree.write(0, producing("a")).andThen([&] {
                      return tree.write(1, producing(std::string(2000, 'x')));
                  });
                  return !written && written.error() == systemCode(EFBIG) &&
                                 messageOf(written.error()).find("root/b") != std::string::npos
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_EQ(listing(folder.path()), Names{});
}

#if defined(HOLLERWICK_FAULTS)

TEST(OutputTreeFailure, WhicheverCallFailsAllIsThereOrNothing)
{
    const TemporaryFolder folder;
    Disk::Faults::clear();
    ASSERT_TRUE(unpack(folder / "count/root"));
    const auto calls = Disk::Faults::calls();
    ASSERT_GT(calls, 10U);
    for (std::uint64_t call = 0; call < calls; ++call) {
        const auto root = folder / "try" / "root";
        Disk::Faults::fail(call, EIO);
        const auto unpacked = unpack(root);
        Disk::Faults::clear();
        EXPECT_EQ(fs::exists(folder / "try"), unpacked.hasValue()) << call << ": " << outcome(unpacked);
        EXPECT_TRUE(unpacked || unpacked.error() == systemCode(EIO)) << call << ": " << outcome(unpacked);
        fs::remove_all(folder / "try");
    }
}

#endif
