#include "host/core/paths/disk/write_behind.h"

#include "host/core/paths/disk/file_handle.h"
#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/noise.h"
#include "tests/support/running_threads.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <cerrno>

using namespace Kelvaris::System;
using Disk::FileHandle;
using Disk::WriteBehind;

namespace {

std::vector<std::byte> vectorOf(std::string_view text)
{
    const auto bytes = bytesOf(text);
    return {bytes.begin(), bytes.end()};
}

} // namespace

TEST(WriteBehind, PiecesStandWhereTheyBelong)
{
    const TemporaryFolder folder;
    const FileHandle file{::open((folder / "a").c_str(), O_RDWR | O_CREAT, 0600)};
    std::string expected;
    WriteBehind writer;
    for (unsigned i = 0; i < 20; ++i) {
        const std::string text = noise(100'000 + i, i);
        std::vector<std::byte> piece = vectorOf(text);
        ASSERT_EQ(writer.begin(file.get(), piece, expected.size(), 0), 0);
        EXPECT_TRUE(piece.empty());
        EXPECT_GE(piece.capacity(), text.size());
        expected += text;
    }
    EXPECT_EQ(writer.finish(), 0);
    EXPECT_TRUE(readFile(folder / "a") == expected);
}

TEST(WriteBehind, AFailureIsToldByTheNextCallWhichBeginsNothing)
{
    const TemporaryFolder folder;
    const FileHandle readOnly{::open(folder.write("a", "old").c_str(), O_RDONLY)};
    WriteBehind writer;
    std::vector<std::byte> piece = vectorOf("new");
    const int first = writer.begin(readOnly.get(), piece, 0, 3);
    piece = vectorOf("newer");
    // on a machine of one processor the first call did it, and knows
    EXPECT_EQ(first == 0 ? writer.begin(readOnly.get(), piece, 3, 8) : first, EBADF);
    EXPECT_EQ(textOf(piece), "newer");
    EXPECT_EQ(writer.finish(), 0);
    EXPECT_EQ(readFile(folder / "a"), "old");
}

TEST(WriteBehind, NoThreadRunsAfterItHasFinishedOrIsGone)
{
    const TemporaryFolder folder;
    const FileHandle file{::open((folder / "a").c_str(), O_RDWR | O_CREAT, 0600)};
    const auto before = runningThreads();
    const std::string text = noise(3'000'000);
    std::vector<std::byte> piece = vectorOf(text);
    {
        WriteBehind writer;
        ASSERT_EQ(writer.begin(file.get(), piece, 0, text.size()), 0);
        ASSERT_EQ(writer.finish(), 0);
        EXPECT_TRUE(onlyRun(before));
        piece = vectorOf(text);
        ASSERT_EQ(writer.begin(file.get(), piece, text.size(), 0), 0);
    }
    EXPECT_TRUE(onlyRun(before));
    EXPECT_TRUE(readFile(folder / "a") == text + text);
}

TEST(WriteBehind, AMovedObjectFinishesWhatTheOtherBegan)
{
    const TemporaryFolder folder;
    const FileHandle file{::open((folder / "a").c_str(), O_RDWR | O_CREAT, 0600)};
    const std::string text = noise(3'000'000);
    std::vector<std::byte> piece = vectorOf(text);
    WriteBehind first;
    ASSERT_EQ(first.begin(file.get(), piece, 0, 0), 0);
    WriteBehind second{std::move(first)};
    EXPECT_EQ(second.finish(), 0);
    EXPECT_TRUE(readFile(folder / "a") == text);
}
