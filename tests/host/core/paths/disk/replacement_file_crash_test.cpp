#include "host/core/paths/disk/replacement_file.h"

#include "tests/host/core/paths/disk/disk_testing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

using namespace Kelvaris::System;
using Disk::ReplacementFile;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

/// A content that shows whether it is whole: one letter, many times.
std::string content(char letter)
{
    return std::string(400'000, letter);
}

bool save(const fs::path& path, const std::string& bytes)
{
    auto file = ReplacementFile::create(filePath(path));
    return file && file->write(bytesOf(bytes)) && file->commit();
}

/// Saves again and again, each time another content, until it is killed.
[[noreturn]] void saveForEver(const fs::path& path)
{
    for (int i = 0;; ++i) {
        if (!save(path, content(static_cast<char>('a' + i % 26))))
            _exit(1);
    }
}

bool isWhole(const std::string& bytes)
{
    return !bytes.empty() && bytes == content(bytes.front());
}

} // namespace

TEST(ReplacementFileCrash, AKilledSaveLeavesTheOldFileOrTheNewOneAndTheNextSaveCleansUp)
{
    const TemporaryFolder folder;
    const auto path = folder / "a";
    ASSERT_TRUE(save(path, content('A')));
    std::mt19937 generator{1};
    for (int i = 0; i < 50; ++i) {
        const pid_t child = fork();
        if (child == 0)
            saveForEver(path);
        std::this_thread::sleep_for(std::chrono::microseconds{generator() % 20'000});
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed";
        ASSERT_TRUE(isWhole(readFile(path))) << "kill " << i;
        ASSERT_TRUE(save(path, content('Z')));
        ASSERT_EQ(listing(folder.path()), Names{"a"}) << "kill " << i;
    }
}
