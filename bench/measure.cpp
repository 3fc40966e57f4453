// bench_measure REPORT COMMAND...: runs the command and writes what it took to REPORT as one line: the exit status,
// seconds by the clock, seconds of the processor, and the most memory that it had at a time, in KiB.
//
// A small program of its own, because a process inherits its parent's peak of memory.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace {

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return 2;
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = vfork();
    if (child == 0) {
        execvp(argv[2], argv + 2);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child)
        return 2;
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    std::FILE* const report = std::fopen(argv[1], "w");
    if (report == nullptr)
        return 2;
    std::fprintf(report, "%d %.6f %.6f %ld\n", WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
                 wall.count(), seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss);
    return std::fclose(report) == 0 ? 0 : 2;
}
