#include "host/core/paths/disk/scratch_file.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/noise.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cerrno>

using namespace Kelvaris::System;
using Disk::ScratchFile;

namespace {

std::string readBack(const ScratchFile& file, std::uint64_t offset, std::size_t size)
{
    std::vector<std::byte> bytes(size);
    file.readAt(offset, bytes).value();
    return textOf(bytes);
}

} // namespace

TEST(ScratchFile, GivesBackWhatWasAppended)
{
    auto file = ScratchFile::create().value();
    EXPECT_EQ(file.append(bytesOf("first")).value(), 0U);
    EXPECT_EQ(file.append(bytesOf("second")).value(), 5U);
    EXPECT_EQ(readBack(file, 0, 11), "firstsecond");
    EXPECT_EQ(readBack(file, 5, 6), "second");
    EXPECT_EQ(file.size(), 11U);
}

TEST(ScratchFile, LeavesNothingInTheDirectoryForTemporaryFilesEvenWhileOpen)
{
    const TemporaryFolder folder;
    const EnvironmentVariable directory{"TMPDIR", folder.path()};
    auto file = ScratchFile::create().value();
    ASSERT_TRUE(file.append(bytesOf("bytes")));
    EXPECT_EQ(listing(folder.path()), std::vector<std::string>{});
}

TEST(ScratchFile, ReadingBehindItsEndIsAnError)
{
    auto file = ScratchFile::create().value();
    ASSERT_TRUE(file.append(bytesOf("bytes")));
    std::vector<std::byte> bytes(6);
    EXPECT_EQ(file.readAt(0, bytes).error(), code(CoreError::fileTruncated));
}

TEST(ScratchFile, AfterTruncationBytesTakeThePlaceOfTheForgottenOnes)
{
    auto file = ScratchFile::create().value();
    ASSERT_TRUE(file.append(bytesOf("keep, forget")));
    file.truncate(4);
    EXPECT_EQ(file.append(bytesOf("!")).value(), 4U);
    EXPECT_EQ(readBack(file, 0, 5), "keep!");
}

TEST(ScratchFile, AMissingDirectoryForTemporaryFilesIsAnErrorThatNamesIt)
{
    const TemporaryFolder folder;
    const EnvironmentVariable directory{"TMPDIR", folder / "missing"};
    const auto file = ScratchFile::create();
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error(), systemCode(ENOENT));
    EXPECT_NE(messageOf(file.error()).find("missing"), std::string::npos) << messageOf(file.error());
}

TEST(ScratchFile, GivesBackBytesWhetherTheyAreWrittenOrWait)
{
    auto file = ScratchFile::create().value();
    std::string all;
    for (const std::size_t size : {10U, 200'000U, 100'000U, 1'000'000U, 0U, 7U, 262'144U, 262'145U, 3U}) {
        const std::string bytes = noise(size, static_cast<unsigned>(size));
        EXPECT_EQ(file.append(bytesOf(bytes)).value(), all.size());
        all += bytes;
        EXPECT_TRUE(readBack(file, 0, all.size()) == all) << size;
        EXPECT_TRUE(readBack(file, all.size() / 2, all.size() - all.size() / 2) == all.substr(all.size() / 2)) << size;
    }
    for (const std::size_t left : {all.size() - 2, all.size() - 3, std::size_t{500'000}, std::size_t{5}}) {
        file.truncate(left);
        EXPECT_EQ(file.append(bytesOf("!")).value(), left);
        all = all.substr(0, left) + '!';
        EXPECT_EQ(file.size(), all.size());
        EXPECT_TRUE(readBack(file, 0, all.size()) == all) << left;
    }
}

TEST(ScratchFile, AFullDiskIsAnErrorAndNotASignalAndLosesNothing)
{
    EXPECT_EQ(inChild([] {
                  const rlimit limit{4096, 4096};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  auto file = ScratchFile::create().value();
                  const std::string first(200'000, 'x');
                  if (!file.append(bytesOf(first)))
                      return 1;
                  for (const std::size_t size : {100'000U, 1'000'000U}) {
                      const auto appended = file.append(bytesOf(std::string(size, 'y')));
                      if (appended || appended.error() != systemCode(EFBIG) || readBack(file, 0, file.size()) != first)
                          return 2;
                  }
                  return 0;
              }),
              0);
}
