#include "kelvaris/system/io/temporary_path2.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>

using namespace Kelvaris::System;
using IO::TemporaryPath2;
namespace fs = std::filesystem;

TEST(TemporaryPath2, MakesAnEmptyDirectoryThatOnlyThisUserCanEnter)
{
    const TemporaryFolder folder;
    const EnvironmentVariable directory{"TMPDIR", folder.path()};
    const auto made = TemporaryPath2::createTemporaryDirectory().value();
    const fs::path path = stdPath(made.path());
    EXPECT_EQ(path.parent_path(), folder.path());
    EXPECT_TRUE(fs::is_empty(path));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
}

TEST(TemporaryPath2, TwoDirectoriesHaveTwoNames)
{
    const auto first = TemporaryPath2::createTemporaryDirectory().value();
    const auto second = TemporaryPath2::createTemporaryDirectory().value();
    EXPECT_TRUE(first.path() != second.path());
}

TEST(TemporaryPath2, RemovesTheDirectoryWithEverythingInItButNotWhatLinksLeadTo)
{
    const TemporaryFolder folder;
    folder.write("mine/a.txt", "bytes");
    fs::path path;
    {
        const auto made = TemporaryPath2::createTemporaryDirectory().value();
        path = stdPath(made.path());
        fs::create_directories(path / "a/b/c");
        fs::create_directory_symlink(folder / "mine", path / "a/link");
    }
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(readFile(folder / "mine/a.txt"), "bytes");
}

TEST(TemporaryPath2, ADetachedDirectoryStays)
{
    const TemporaryFolder folder;
    const EnvironmentVariable directory{"TMPDIR", folder.path()};
    const fs::path path = stdPath(TemporaryPath2::createTemporaryDirectory().value().detach().value());
    EXPECT_TRUE(fs::is_directory(path));
}

TEST(TemporaryPath2, ADirectoryIsGivenUpOnce)
{
    auto made = TemporaryPath2::createTemporaryDirectory().value();
    const fs::path path = stdPath(std::move(made).detach().value());
    EXPECT_FALSE(made.path() != FilePath2{});
    EXPECT_EQ(std::move(made).detach().error(), code(CoreError::noFileName));
    fs::remove(path);
}

TEST(TemporaryPath2, MovingHandsTheDirectoryOver)
{
    std::optional<TemporaryPath2> first = TemporaryPath2::createTemporaryDirectory().value();
    auto second = TemporaryPath2::createTemporaryDirectory().value();
    const fs::path kept = stdPath(first->path());
    const fs::path replaced = stdPath(second.path());
    second = std::move(*first);
    first.reset();
    EXPECT_TRUE(fs::exists(kept));
    EXPECT_FALSE(fs::exists(replaced));
    EXPECT_EQ(stdPath(second.path()), kept);
}

TEST(TemporaryPath2, AMissingDirectoryForTemporaryFilesIsAnErrorThatNamesIt)
{
    const TemporaryFolder folder;
    const EnvironmentVariable directory{"TMPDIR", folder / "missing"};
    const auto made = TemporaryPath2::createTemporaryDirectory();
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error(), systemCode(ENOENT));
    EXPECT_NE(messageOf(made.error()).find("missing"), std::string::npos) << messageOf(made.error());
}

TEST(TemporaryPath2, ARelativeTmpdirOrOneThatEndsInASlashGivesAnAbsolutePath)
{
    const TemporaryFolder folder;
    for (const fs::path& tmpdir :
         {fs::relative(folder.path()), folder.path() / "", fs::path{folder.path().native() + "//"}}) {
        const EnvironmentVariable directory{"TMPDIR", tmpdir};
        const auto made = TemporaryPath2::createTemporaryDirectory().value();
        EXPECT_EQ(fs::weakly_canonical(stdPath(made.path()).parent_path()), fs::weakly_canonical(folder.path()));
        EXPECT_TRUE(stdPath(made.path()).is_absolute()) << tmpdir;
        EXPECT_EQ(stdPath(made.path()).native().find("//"), std::string::npos) << tmpdir;
    }
}

TEST(TemporaryPath2, AnEmptyTmpdirMeansSlashTmp)
{
    const EnvironmentVariable directory{"TMPDIR", ""};
    const auto made = TemporaryPath2::createTemporaryDirectory().value();
    EXPECT_EQ(stdPath(made.path()).parent_path(), "/tmp");
}
