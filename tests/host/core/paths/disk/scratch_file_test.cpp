#include "host/core/paths/disk/scratch_file.h"

#include "tests/host/core/paths/disk/disk_testing.h"
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

TEST(ScratchFile, AFullDiskIsAnErrorAndNotASignal)
{
    EXPECT_EQ(inChild([] {
                  const rlimit limit{4096, 4096};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  auto file = ScratchFile::create().value();
                  const auto appended = file.append(bytesOf(std::string(8192, 'x')));
                  return !appended && appended.error() == systemCode(EFBIG) && file.size() == 0 ? 0 : 1;
              }),
              0);
}
