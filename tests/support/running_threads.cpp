#include "tests/support/running_threads.h"

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

std::ptrdiff_t runningThreads()
{
    namespace fs = std::filesystem;
    return std::distance(fs::directory_iterator{"/proc/self/task"}, fs::directory_iterator{});
}

bool onlyRun(std::ptrdiff_t threads)
{
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds{30};
    while (runningThreads() > threads && std::chrono::steady_clock::now() < patience)
        std::this_thread::yield();
    return runningThreads() == threads;
}
