#include "tests/e2e/host_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <thread>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// The program with a standard error that is full, so that it waits at its first line there until somebody reads.
class WaitingHost
{
public:
    explicit WaitingHost(std::vector<std::string> words)
    {
        EXPECT_EQ(pipe2(m_pipe.data(), O_CLOEXEC), 0);
        fill();
        words.insert(words.begin(), HOLLERWICK_HOST);
        m_process = fork();
        if (m_process != 0)
            return;
        dup2(m_pipe[1], STDERR_FILENO);
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        execv(HOLLERWICK_HOST, arguments.data());
        _exit(127);
    }

    ~WaitingHost()
    {
        close(m_pipe[0]);
        close(m_pipe[1]);
    }

    WaitingHost(const WaitingHost&) = delete;
    WaitingHost& operator=(const WaitingHost&) = delete;

    /// Returns when it writes to standard error, which is when the function is called.
    void awaitLine() const
    {
        // the system call that it is in, and its first argument: write, to 2
        const std::string place = "/proc/" + std::to_string(m_process) + "/syscall";
        for (std::string call; !call.starts_with("1 0x2 ");) {
            std::ifstream file{place};
            ASSERT_TRUE(file.good()) << "the program has ended";
            std::getline(file, call);
            std::this_thread::yield();
        }
    }

    /// Sends the signal and reads what was written to standard error.
    /// @return  the signal that ended the program; 0 when it ended otherwise
    int interrupt(int signal)
    {
        kill(m_process, signal);
        close(m_pipe[1]);
        m_pipe[1] = -1;
        std::array<char, 4096> piece;
        for (ssize_t count = 1; count > 0;) {
            count = read(m_pipe[0], piece.data(), piece.size());
            m_errors.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        }
        int status = 0;
        waitpid(m_process, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

    std::string errors() const { return m_errors.substr(m_filled); }

private:
    void fill()
    {
        fcntl(m_pipe[1], F_SETFL, O_NONBLOCK);
        const std::string blank(1024, '\n');
        for (ssize_t count = 0; count >= 0; m_filled += static_cast<std::size_t>(count)) {
            count = write(m_pipe[1], blank.data(), blank.size());
            if (count < 0)
                break;
        }
        fcntl(m_pipe[1], F_SETFL, 0);
    }

    std::array<int, 2> m_pipe{};
    pid_t m_process = -1;
    std::size_t m_filled = 0;
    std::string m_errors;
};

std::vector<std::string> namesBelow(const fs::path& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator{directory})
        names.push_back(entry.path().filename().string());
    return names;
}

} // namespace

TEST(Interruption, EndsPackingByTheSignalAndLeavesTheOldFile)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const TemporaryFolder folder;
        const std::string output = folder.write("a.kvbdl.zip", "old").string();
        WaitingHost host{{"pack", std::string{SAMPLES_DIRECTORY} + "/designs/rc_lowpass", "--output", output, "--force",
                          "--log-script-calls"}};
        host.awaitLine();
        EXPECT_EQ(host.interrupt(signal), signal);
        EXPECT_THAT(host.errors(), HasSubstr("hollerwick-host: interrupted; nothing was written\n"));
        EXPECT_THAT(namesBelow(folder.path()), ElementsAre("a.kvbdl.zip"));
        EXPECT_EQ(readFile(output), "old");
    }
}
