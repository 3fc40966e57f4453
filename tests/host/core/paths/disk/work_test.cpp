#include "host/core/paths/disk/work.h"

#include "host/core/paths/disk/output_tree.h"
#include "host/core/paths/disk/replacement_file.h"
#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/noise.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

using namespace Kelvaris::System;
using namespace Kelvaris::System::Disk;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Work goes on after the test, whatever the test has seen.
class WorkTest : public testing::Test
{
protected:
    ~WorkTest() override
    {
        Work::setObserver({});
        Work::resume();
    }
};

} // namespace

TEST_F(WorkTest, TellsWhatWasMoved)
{
    const TemporaryFolder folder;
    std::uint64_t written = 0;
    const std::uint64_t before = Work::moved().written;
    Work::setObserver([&](const Work::Moved& moved) { written = moved.written - before; });
    auto file = ReplacementFile::create(filePath(folder / "a")).value();
    ASSERT_TRUE(file.write(bytesOf("twelve bytes")));
    ASSERT_TRUE(file.commit());
    EXPECT_EQ(written, 12U);
}

TEST_F(WorkTest, LeavesTheOldFileWhenASaveIsCancelled)
{
    const TemporaryFolder folder;
    folder.write("a", "old");
    {
        auto file = ReplacementFile::create(filePath(folder / "a")).value();
        ASSERT_TRUE(file.write(bytesOf(noise(1 << 20))));
        Work::cancel();
        const auto committed = file.commit();
        ASSERT_FALSE(committed);
        EXPECT_EQ(committed.error(), systemCode(ECANCELED));
    }
    EXPECT_THAT(listing(folder.path()), ElementsAre("a"));
    EXPECT_EQ(readFile(folder / "a"), "old");
}

TEST_F(WorkTest, RemovesWhatWasUnpackedWhenItIsCancelledInTheMiddle)
{
    const TemporaryFolder folder;
    Work::setObserver([](const Work::Moved&) { Work::cancel(); });
    {
        auto tree = OutputTree::plan(filePath(folder / "new/deep"), {{"a"}, {"d", "b"}}).value();
        const OutputTree::Producer produce = [](const ByteSink& sink) { return sink(bytesOf("bytes")); };
        EXPECT_TRUE(tree.write(0, produce));
        const auto written = tree.write(1, produce);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error(), systemCode(ECANCELED));
    }
    EXPECT_THAT(listing(folder.path()), IsEmpty());
}
