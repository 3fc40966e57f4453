#include "host/core/paths/disk/replacement_file.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/noise.h"
#include "tests/support/running_threads.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <optional>

using namespace Kelvaris::System;
using Disk::InputFile;
using Disk::ReplacementFile;
namespace fs = std::filesystem;

namespace {

std::string save(const fs::path& path, std::string_view bytes)
{
    auto file = ReplacementFile::create(filePath(path));
    if (!file)
        return outcome(file);
    auto saved = file->write(bytesOf(bytes)).andThen([&] { return file->commit(); });
    return outcome(saved);
}

unsigned modeOf(const fs::path& path)
{
    struct stat status
    {
    };
    EXPECT_EQ(lstat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

using Names = std::vector<std::string>;

} // namespace

TEST(ReplacementFile, ANewFileHoldsWhatWasWritten)
{
    const TemporaryFolder folder;
    EXPECT_EQ(save(folder / "größe.kvbdl.zip", "bytes"), "no error");
    EXPECT_EQ(readFile(folder / "größe.kvbdl.zip"), "bytes");
    EXPECT_EQ(listing(folder.path()), Names{"größe.kvbdl.zip"});
}

TEST(ReplacementFile, AnOldFileStandsUntilTheNewOneIsWhole)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", "old");
    auto file = ReplacementFile::create(filePath(path)).value();
    ASSERT_TRUE(file.write(bytesOf("new")));
    EXPECT_EQ(readFile(path), "old");
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(readFile(path), "new");
    EXPECT_EQ(listing(folder.path()), Names{"a"});
}

TEST(ReplacementFile, WithoutACommitNothingHasHappened)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", "old");
    {
        auto file = ReplacementFile::create(filePath(path)).value();
        ASSERT_TRUE(file.write(bytesOf(noise(1'000'000))));
    }
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(listing(folder.path()), Names{"a"});
}

TEST(ReplacementFile, PiecesOfAllSizesStandInTheirOrder)
{
    const TemporaryFolder folder;
    std::string expected;
    auto file = ReplacementFile::create(filePath(folder / "a")).value();
    for (const std::size_t size : {1U, 100'000U, 0U, 300'000U, 5U, 262'144U, 7U, 262'143U, 2U}) {
        const std::string piece = noise(size, static_cast<unsigned>(size));
        ASSERT_TRUE(file.write(bytesOf(piece)));
        expected += piece;
        EXPECT_EQ(file.position(), expected.size());
    }
    ASSERT_TRUE(file.commit());
    EXPECT_TRUE(readFile(folder / "a") == expected);
}

TEST(ReplacementFile, AppendsAStretchOfAnotherFile)
{
    const TemporaryFolder folder;
    const std::string bytes = noise(3'000'000);
    const auto source = InputFile::open(filePath(folder.write("source", bytes))).value();
    auto file = ReplacementFile::create(filePath(folder / "a")).value();
    ASSERT_TRUE(file.write(bytesOf("before ")));
    ASSERT_TRUE(file.append(source, 10, 2'500'000));
    ASSERT_TRUE(file.append(source, 3, 0));
    ASSERT_TRUE(file.append(source, 7, 20));
    ASSERT_TRUE(file.write(bytesOf(" behind")));
    ASSERT_TRUE(file.commit());
    EXPECT_TRUE(readFile(folder / "a") == "before " + bytes.substr(10, 2'500'000) + bytes.substr(7, 20) + " behind");
}

TEST(ReplacementFile, WhatWaitsForAThreadStandsInItsPlaceWhateverIsAppendedNext)
{
    const TemporaryFolder folder;
    const std::string bytes = noise(3'000'000);
    const auto source = InputFile::open(filePath(folder.write("source", bytes))).value();
    const auto before = runningThreads();
    std::string expected;
    auto file = ReplacementFile::create(filePath(folder / "a")).value();
    for (unsigned i = 0; i < 300; ++i) {
        const std::string piece = noise(40'000, i);
        ASSERT_TRUE(file.write(bytesOf(piece)));
        expected += piece;
        if (i % 50 == 49) {
            ASSERT_TRUE(file.append(source, i, 1'000'000));
            expected += bytes.substr(i, 1'000'000);
        }
        EXPECT_EQ(file.position(), expected.size());
    }
    ASSERT_TRUE(file.commit());
    EXPECT_TRUE(onlyRun(before));
    EXPECT_TRUE(readFile(folder / "a") == expected);
}

TEST(ReplacementFile, ASourceThatHasBecomeShorterIsAnErrorThatNamesTheSource)
{
    const TemporaryFolder folder;
    const auto path = folder.write("source", noise(3'000'000));
    const auto source = InputFile::open(filePath(path)).value();
    auto file = ReplacementFile::create(filePath(folder / "a")).value();
    fs::resize_file(path, 1'000'000);
    const auto appended = file.append(source, 0, 3'000'000);
    ASSERT_FALSE(appended);
    EXPECT_EQ(appended.error(), code(CoreError::fileTruncated));
    EXPECT_NE(messageOf(appended.error()).find("source"), std::string::npos) << messageOf(appended.error());
}

TEST(ReplacementFile, AFileCanReplaceTheOneItReadsFrom)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", "0123456789");
    const auto source = InputFile::open(filePath(path)).value();
    auto file = ReplacementFile::create(filePath(path)).value();
    ASSERT_TRUE(file.append(source, 5, 5));
    ASSERT_TRUE(file.append(source, 0, 5));
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(readFile(path), "5678901234");
}

TEST(ReplacementFile, TheModeOfTheReplacedFileIsKept)
{
    const TemporaryFolder folder;
    for (const unsigned mode : {0600U, 0640U, 0664U, 0755U}) {
        const auto path = folder.write("a", "old");
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(save(path, "new"), "no error");
        EXPECT_EQ(modeOf(path), mode);
    }
}

TEST(ReplacementFile, ANewFileHasTheModeThatTheUserAskedFor)
{
    const TemporaryFolder folder;
    const mode_t before = umask(027);
    EXPECT_EQ(save(folder / "a", "new"), "no error");
    umask(before);
    EXPECT_EQ(modeOf(folder / "a"), 0640U);
}

TEST(ReplacementFile, NobodyElseCanReadWhatWillReplaceAPrivateFile)
{
    const TemporaryFolder folder;
    const auto path = folder.write("a", "old");
    ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    const auto file = ReplacementFile::create(filePath(path)).value();
    for (const std::string& name : listing(folder.path()))
        EXPECT_EQ(modeOf(folder / name), 0600U) << name;
}

TEST(ReplacementFile, ALinkStaysAndTheFileBehindItIsReplaced)
{
    const TemporaryFolder folder;
    folder.write("there/a", "old");
    fs::create_directory(folder / "here");
    fs::create_symlink("../there/a", folder / "here/link");
    fs::create_symlink(folder / "here/link", folder / "link to a link");
    EXPECT_EQ(save(folder / "link to a link", "new"), "no error");
    EXPECT_TRUE(fs::is_symlink(folder / "link to a link"));
    EXPECT_TRUE(fs::is_symlink(folder / "here/link"));
    EXPECT_EQ(readFile(folder / "there/a"), "new");
    EXPECT_EQ(listing(folder.path()), (Names{"here/", "here/link", "link to a link", "there/", "there/a"}));
}

TEST(ReplacementFile, ALinkToNothingBecomesALinkToTheNewFile)
{
    const TemporaryFolder folder;
    fs::create_symlink("not yet", folder / "link");
    EXPECT_EQ(save(folder / "link", "new"), "no error");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(readFile(folder / "not yet"), "new");
}

TEST(ReplacementFile, AFileNameOf255BytesIsNotTooLong)
{
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    EXPECT_EQ(save(folder / name, "new"), "no error");
    EXPECT_EQ(listing(folder.path()), Names{name});
}

TEST(ReplacementFile, SavesOfOneFileAtTheSameTimeDoNotDisturbEachOther)
{
    const TemporaryFolder folder;
    auto first = ReplacementFile::create(filePath(folder / "a")).value();
    auto second = ReplacementFile::create(filePath(folder / "a")).value();
    ASSERT_TRUE(first.write(bytesOf("first")));
    ASSERT_TRUE(second.write(bytesOf("second")));
    ASSERT_TRUE(second.commit());
    EXPECT_EQ(readFile(folder / "a"), "second");
    ASSERT_TRUE(first.commit());
    EXPECT_EQ(readFile(folder / "a"), "first");
    EXPECT_EQ(listing(folder.path()), Names{"a"});
}

TEST(ReplacementFile, WhatAKilledSaveLeftBehindIsRemovedByTheNext)
{
    const TemporaryFolder folder;
    ASSERT_EQ(inChild([&]() -> int {
                  auto first = ReplacementFile::create(filePath(folder / "a")).value();
                  auto second = ReplacementFile::create(filePath(folder / "a")).value();
                  (void)first.write(bytesOf(noise(500'000))); // what is left has no promised length
                  _exit(7);
              }),
              7);
    EXPECT_EQ(listing(folder.path()).size(), 2U);
    EXPECT_EQ(save(folder / "a", "new"), "no error");
    EXPECT_EQ(listing(folder.path()), Names{"a"});
    EXPECT_EQ(readFile(folder / "a"), "new");
}

TEST(ReplacementFile, ALinkInThePlaceOfTheTemporaryFileIsNotFollowed)
{
    const TemporaryFolder folder;
    folder.write("victim", "untouched");
    std::string temporary;
    {
        const auto file = ReplacementFile::create(filePath(folder / "a")).value();
        temporary = listing(folder.path()).front();
    }
    fs::create_symlink("victim", folder / temporary);
    EXPECT_EQ(save(folder / "a", "new"), "no error");
    EXPECT_EQ(readFile(folder / "victim"), "untouched");
    EXPECT_EQ(readFile(folder / "a"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / temporary)) << "what is not ours stays";
}

TEST(ReplacementFile, AMovedObjectGoesOnWithTheFile)
{
    const TemporaryFolder folder;
    std::optional<ReplacementFile> first = ReplacementFile::create(filePath(folder / "a")).value();
    ASSERT_TRUE(first->write(bytesOf("one ")));
    ReplacementFile second = *std::move(first);
    first.reset();
    ASSERT_TRUE(second.write(bytesOf("two")));
    ASSERT_TRUE(second.commit());
    EXPECT_EQ(readFile(folder / "a"), "one two");
}
