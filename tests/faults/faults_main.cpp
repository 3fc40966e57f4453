#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

/// Thousands of saves wait for the disk thousands of times: where there is one in memory, they go there.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (std::filesystem::is_directory("/dev/shm"))
        setenv("TMPDIR", "/dev/shm", 0);
    return RUN_ALL_TESTS();
}
