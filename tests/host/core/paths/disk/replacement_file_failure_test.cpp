#include "host/core/paths/disk/faults.h"
#include "host/core/paths/disk/replacement_file.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/noise.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace Kelvaris::System;
using Disk::InputFile;
using Disk::ReplacementFile;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

ErrorCode2 failureOf(const fs::path& path)
{
    const auto file = ReplacementFile::create(filePath(path));
    EXPECT_FALSE(file);
    EXPECT_NE(messageOf(file.error()).find(path.filename().string()), std::string::npos) << messageOf(file.error());
    return file.error();
}

/// The steps of a save: pieces in the buffer and beyond it, and a stretch of another file.
Expected<void, ErrorCode2> save(const fs::path& path, const fs::path& sourcePath)
{
    auto source = InputFile::open(filePath(sourcePath));
    if (!source)
        return source.error();
    auto file = ReplacementFile::create(filePath(path));
    if (!file)
        return file.error();
    const std::string piece(300'000, 'n');
    return file->write(bytesOf("new "))
        .andThen([&] { return file->write(bytesOf(piece)); })
        .andThen([&] { return file->append(*source, 0, source->size()); })
        .andThen([&] { return file->commit(); });
}

} // namespace

TEST(ReplacementFileFailure, ADirectoryIsNoTarget)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "sub");
    EXPECT_EQ(failureOf(folder / "sub"), code(CoreError::notARegularFile));
}

TEST(ReplacementFileFailure, ADeviceIsNoTarget)
{
    EXPECT_EQ(failureOf("/dev/null"), code(CoreError::notARegularFile));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(ReplacementFileFailure, APipeIsNoTargetAndStays)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(folder / "pipe"), code(CoreError::notARegularFile));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

TEST(ReplacementFileFailure, APathWithoutAFileNameIsNoTarget)
{
    const TemporaryFolder folder;
    EXPECT_EQ(ReplacementFile::create(FilePath2{}).error(), code(CoreError::noFileName));
    EXPECT_EQ(ReplacementFile::create(filePath(folder.path() / "new" / "")).error(), code(CoreError::noFileName));
}

TEST(ReplacementFileFailure, AMissingDirectoryIsTheSystemsErrorWithTheTarget)
{
    const TemporaryFolder folder;
    EXPECT_EQ(failureOf(folder / "missing/a"), systemCode(ENOENT));
}

TEST(ReplacementFileFailure, AFileInThePlaceOfTheDirectoryIsTheSystemsError)
{
    const TemporaryFolder folder;
    folder.write("file", "bytes");
    EXPECT_EQ(failureOf(folder / "file/a"), systemCode(ENOTDIR));
}

TEST(ReplacementFileFailure, LinksInACircleAreTheSystemsError)
{
    const TemporaryFolder folder;
    fs::create_symlink("two", folder / "one");
    fs::create_symlink("one", folder / "two");
    EXPECT_EQ(failureOf(folder / "one"), systemCode(ELOOP));
}

TEST(ReplacementFileFailure, ADirectoryThatTakesNoFilesIsAnErrorThatNamesTheTarget)
{
    // holds for the administrator too
    const auto error = failureOf("/proc/hollerwick.zip");
    EXPECT_TRUE(error == systemCode(ENOENT) || error == systemCode(EACCES)) << messageOf(error);
}

TEST(ReplacementFileFailure, AReadOnlyDirectoryIsAnErrorAndTheOldFileStays)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "the administrator may write everywhere";
    const TemporaryFolder folder;
    folder.write("sub/a", "old");
    fs::permissions(folder / "sub", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(failureOf(folder / "sub/a"), systemCode(EACCES));
    EXPECT_EQ(readFile(folder / "sub/a"), "old");
}

TEST(ReplacementFileFailure, AWriteProtectedFileIsNotReplaced)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "the administrator may write everywhere";
    const TemporaryFolder folder;
    const auto path = folder.write("a", "old");
    fs::permissions(path, fs::perms::owner_read);
    EXPECT_EQ(failureOf(path), systemCode(EACCES));
    EXPECT_EQ(readFile(path), "old");
}

TEST(ReplacementFileFailure, AnOrdinaryUserGetsTheErrorsOfReadOnlyPlaces)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "the tests above have shown it";
    const TemporaryFolder folder;
    folder.write("sub/a", "old");
    folder.write("b", "old");
    fs::permissions(folder / "b", fs::perms::owner_read);
    EXPECT_EQ(inChild([&] {
                  if (seteuid(65534) != 0)
                      return 9;
                  fs::current_path("/");
                  const bool directory = failureOf(folder / "sub/a") == systemCode(EACCES);
                  const bool file = failureOf(folder / "b") == systemCode(EACCES);
                  return directory && file ? 0 : 1;
              }),
              0);
    EXPECT_EQ(readFile(folder / "sub/a"), "old");
    EXPECT_EQ(readFile(folder / "b"), "old");
}

TEST(ReplacementFileFailure, AFullDiskIsAnErrorAndTheOldFileStays)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", "old");
    const auto source = folder.write("source", noise(200'000));
    EXPECT_EQ(inChild([&] {
                  const rlimit limit{100'000, 100'000};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  const auto saved = save(path, source);
                  return !saved && saved.error() == systemCode(EFBIG) ? 0 : 1;
              }),
              0);
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(listing(folder.path()), (Names{"a", "source"}));
}

TEST(ReplacementFileFailure, AFullDiskWhileCopyingIsAnErrorThatNamesTheTarget)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", "old");
    const auto sourcePath = folder.write("source", noise(200'000));
    EXPECT_EQ(inChild([&] {
                  const rlimit limit{100'000, 100'000};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  const auto source = InputFile::open(filePath(sourcePath)).value();
                  auto file = ReplacementFile::create(filePath(path)).value();
                  const auto appended = file.append(source, 0, source.size()).andThen([&] { return file.commit(); });
                  return !appended && appended.error() == systemCode(EFBIG) &&
                                 messageOf(appended.error()).find("/a:") != std::string::npos
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_EQ(readFile(path), "old");
}

#if defined(HOLLERWICK_FAULTS)

TEST(ReplacementFileFailure, WhicheverCallFailsTheFileIsOldOrNewAndWhole)
{
    const TemporaryFolder folder;
    const auto path = folder / "a";
    const auto source = folder.write("source", noise(200'000));
    const std::string whole = "new " + std::string(300'000, 'n') + readFile(source);
    ASSERT_TRUE(save(path, source));
    Disk::Faults::clear();
    ASSERT_TRUE(save(path, source));
    const auto calls = Disk::Faults::calls();
    ASSERT_GT(calls, 10U);
    int failures = 0;
    for (std::uint64_t call = 0; call < calls; ++call) {
        folder.write("a", "old");
        Disk::Faults::fail(call, EIO);
        const auto saved = save(path, source);
        Disk::Faults::clear();
        failures += saved ? 0 : 1;
        EXPECT_TRUE(readFile(path) == (saved ? whole : "old")) << "call " << call << ": " << outcome(saved);
        EXPECT_TRUE(saved || saved.error() == systemCode(EIO)) << call << ": " << outcome(saved);
        EXPECT_TRUE(save(path, source)) << call;
        EXPECT_EQ(listing(folder.path()), (Names{"a", "source"})) << call;
    }
    EXPECT_GT(failures, 6);
}

#endif
