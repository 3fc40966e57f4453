#include "tests/hostile/answering_machine.h"
#include "tests/hostile/random_user.h"
#include "tests/script/loaded_module.h"
#include "tests/support/environment_variable.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <QtGui/QPixmapCache>

#include <gtest/gtest.h>

#include <malloc.h>

#include <algorithm>
#include <cstdlib>

namespace fs = std::filesystem;

namespace {

/// A day in the life of a host: 20,000 calls and actions, or as many as HOLLERWICK_ACTIONS says.
int actions()
{
    const char* const wanted = std::getenv("HOLLERWICK_ACTIONS");
    return wanted == nullptr ? 20'000 : std::atoi(wanted);
}

/// Files of ours and of the user. Qt keeps pipes for its threads and files of the system, the media types for one.
std::vector<std::string> openFiles()
{
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator{"/proc/self/fd"}) {
        std::error_code gone; // the one with which this directory is read
        const fs::path file = fs::read_symlink(entry.path(), gone);
        if (!gone && file.is_absolute() && !file.string().starts_with("/usr/") && !file.string().ends_with("/fd"))
            files.push_back(file);
    }
    std::ranges::sort(files);
    return files;
}

/// Bytes that are allocated; 0 where a sanitizer keeps the books. The pictures that Qt's style keeps do not count: they
/// are 10 MB at most, and were nearly all that a long life seemed to add. Without them 60,000 actions add 57 KB, 20,000
/// up to 250.
std::size_t allocatedBytes()
{
    QPixmapCache::clear();
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace

TEST(LongLife, TakesNoMoreMemoryAndLeavesNoFileOpenOrBehind)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "tmp");
    const EnvironmentVariable directory{"TMPDIR", (folder / "tmp").string()};
    const LoadedModule module;
    RandomUser user{20, folder / "home"};
    const AnsweringMachine answers{[&](QWidget& window) { user.answer(window); }};

    // what is made once, fonts and icons and the like, is there after the first part of the day
    for (int action = 0; action < actions() / 4; ++action) {
        const LogCapture quiet;
        user.act();
    }
    user.settle();
    const auto filesBefore = openFiles();
    const std::size_t bytesBefore = allocatedBytes();
    for (int action = 0; action < actions(); ++action) {
        const LogCapture quiet;
        user.act();
        if (action % 1'000 == 999)
            user.settle();
    }
    user.settle();
    EXPECT_EQ(openFiles(), filesBefore);
    EXPECT_LE(allocatedBytes(), bytesBefore + (std::size_t{1} << 20));
    EXPECT_TRUE(fs::is_empty(folder / "tmp"));
    RecordProperty("bytes_before", std::to_string(bytesBefore));
    RecordProperty("bytes_after", std::to_string(allocatedBytes()));
}
