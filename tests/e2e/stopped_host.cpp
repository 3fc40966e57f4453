#include "tests/e2e/stopped_host.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <thread>

namespace fs = std::filesystem;

namespace {

/// Becomes the program. Only calls to the system from here on: this is another process.
[[noreturn]] void becomeHost(const char* output, const char* errors, char* const* arguments)
{
    // the first terminal that the leader of a session opens becomes the one that controls it
    setsid();
    // who runs the tests in the background has them ignored
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, SIG_DFL);
    dup2(open(output, O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    dup2(open(errors, O_RDWR | O_APPEND | O_CLOEXEC), STDERR_FILENO);
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    execv(HOLLERWICK_HOST, arguments);
    _exit(127);
}

constexpr int noFile = -1;

/// The file that the call writes into, when the process stands before one that writes.
int writtenFile(pid_t process)
{
    __ptrace_syscall_info call{};
    ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof call, &call);
    if (call.op != PTRACE_SYSCALL_INFO_ENTRY)
        return noFile;
    if (call.entry.nr == SYS_pwrite64)
        return static_cast<int>(call.entry.args[0]);
    return call.entry.nr == SYS_copy_file_range ? static_cast<int>(call.entry.args[2]) : noFile;
}

bool isBelow(const fs::path& directory, pid_t process, int file)
{
    std::error_code none;
    const fs::path open = fs::read_symlink("/proc/" + std::to_string(process) + "/fd/" + std::to_string(file), none);
    return open.string().starts_with(fs::canonical(directory).string() + "/");
}

/// Whether the signal waits for the process, which is held.
bool isPending(int signal, pid_t process)
{
    std::ifstream file{"/proc/" + std::to_string(process) + "/status"};
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("ShdPnd:"))
            return (std::stoull(line.substr(7), nullptr, 16) >> (signal - 1) & 1U) != 0;
    }
    return true; // it is gone: nothing to wait for
}

int endingSignal(int status)
{
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

StoppedHost::StoppedHost(std::vector<std::string> words)
{
    start(std::move(words), m_folder.write("errors", "").string());
}

StoppedHost::StoppedHost(std::vector<std::string> words, unsigned short columns)
{
    m_terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    grantpt(m_terminal);
    unlockpt(m_terminal);
    const winsize size{.ws_row = 25, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    ioctl(m_terminal, TIOCSWINSZ, &size);
    start(std::move(words), ptsname(m_terminal));
}

void StoppedHost::start(std::vector<std::string> words, const std::string& errors)
{
    words.insert(words.begin(), HOLLERWICK_HOST);
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::string output = m_folder.write("output", "").string();
    m_process = fork();
    if (m_process == 0)
        becomeHost(output.c_str(), errors.c_str(), arguments.data());
    waitpid(m_process, nullptr, 0);
    ptrace(PTRACE_SETOPTIONS, m_process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
}

StoppedHost::~StoppedHost()
{
    if (!m_hasEnded)
        interrupt(SIGKILL);
    if (m_terminal != -1)
        close(m_terminal);
}

bool StoppedHost::awaitWriteBelow(const fs::path& directory)
{
    constexpr int atCall = SIGTRAP | 0x80;
    std::intptr_t passedOn = 0;
    for (;;) {
        ptrace(PTRACE_SYSCALL, m_process, nullptr, passedOn);
        int status = 0;
        waitpid(m_process, &status, 0);
        m_hasEnded = !WIFSTOPPED(status);
        if (m_hasEnded)
            return false;
        passedOn = WSTOPSIG(status) == atCall ? 0 : WSTOPSIG(status);
        if (passedOn != 0)
            continue;
        if (const int file = writtenFile(m_process); file != noFile && isBelow(directory, m_process, file))
            return true;
    }
}

bool StoppedHost::awaitText(const std::string& text)
{
    letGo();
    while (output().find(text) == std::string::npos && errors().find(text) == std::string::npos) {
        int status = 0;
        m_hasEnded = waitpid(m_process, &status, WNOHANG) != 0;
        if (m_hasEnded)
            return false;
        std::this_thread::yield();
    }
    return true;
}

int StoppedHost::awaitEnd()
{
    letGo();
    int status = 0;
    waitpid(m_process, &status, 0);
    m_hasEnded = true;
    return endingSignal(status);
}

int StoppedHost::interrupt(int signal)
{
    kill(m_process, signal);
    return awaitEnd();
}

int StoppedHost::insist(int signal)
{
    letGo();
    int status = 0;
    while (waitpid(m_process, &status, WNOHANG) == 0) {
        kill(m_process, signal);
        std::this_thread::yield();
    }
    m_hasEnded = true;
    return endingSignal(status);
}

int StoppedHost::pressCtrlC()
{
    constexpr char key = '\003';
    EXPECT_EQ(write(m_terminal, &key, 1), 1);
    // a terminal makes a signal of a key in its own time
    while (!isPending(SIGINT, m_process))
        std::this_thread::yield();
    return awaitEnd();
}

std::string StoppedHost::output() const
{
    return readFile(m_folder / "output");
}

std::string StoppedHost::errors()
{
    if (m_terminal == -1)
        return readFile(m_folder / "errors");
    std::array<char, 4096> piece;
    for (;;) {
        const ssize_t count = read(m_terminal, piece.data(), piece.size());
        if (count <= 0)
            return m_shown;
        m_shown.append(piece.data(), static_cast<std::size_t>(count));
    }
}

void StoppedHost::letGo()
{
    if (m_isHeld)
        ptrace(PTRACE_DETACH, m_process, nullptr, nullptr);
    m_isHeld = false;
}
