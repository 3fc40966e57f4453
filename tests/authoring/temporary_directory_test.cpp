#include "authoring/temporary_directory.h"

#include "authoring/path_conversion.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

class CreateTemporaryDirectory : public testing::Test
{
protected:
    void SetUp() override { setenv("TMPDIR", folder.path().c_str(), 1); }
    void TearDown() override { unsetenv("TMPDIR"); }

    TemporaryFolder folder;
};

TEST_F(CreateTemporaryDirectory, TheDirectoryOutlivesTheCallAndIsEmpty)
{
    const auto directory = Authoring::createTemporaryDirectory();
    ASSERT_TRUE(directory);
    const fs::path path = Authoring::toStdPath(*directory);
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_TRUE(fs::is_empty(path));
    EXPECT_EQ(path.parent_path(), folder.path());
}

TEST_F(CreateTemporaryDirectory, EachCallMakesAnotherOne)
{
    EXPECT_TRUE(Authoring::createTemporaryDirectory().value() != Authoring::createTemporaryDirectory().value());
}

TEST_F(CreateTemporaryDirectory, WithoutAPlaceForItIsAnError)
{
    setenv("TMPDIR", (folder / "not there").c_str(), 1);
    EXPECT_FALSE(Authoring::createTemporaryDirectory());
}

} // namespace
