#pragma once

#include "tests/support/temporary_folder.h"

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

/// The real hollerwick-host, held where a test wants it, so that a signal comes at that point and at no other.
class StoppedHost
{
public:
    /// Starts the program; it waits before its first step.
    explicit StoppedHost(std::vector<std::string> words);

    /// Ends the program, should it still be there.
    ~StoppedHost();

    StoppedHost(const StoppedHost&) = delete;
    StoppedHost& operator=(const StoppedHost&) = delete;

    /// Lets it run until its next write into a file below `directory`, which has not happened yet.
    /// @return  false when the program has ended instead
    bool awaitWriteBelow(const std::filesystem::path& directory);

    /// Lets it run, and returns when its standard output or error holds that text.
    /// @return  false when the program has ended instead
    bool awaitText(const std::string& text);

    /// Sends the signal and lets the program go on.
    /// @return  the signal that ended it; 0 when it ended otherwise
    int interrupt(int signal);

    /// Sends the signal again and again, until the program has ended.
    /// @return  as above
    int insist(int signal);

    std::string output() const { return readFile(m_folder / "output"); }
    std::string errors() const { return readFile(m_folder / "errors"); }

private:
    void letGo();
    int reap();

    TemporaryFolder m_folder;
    pid_t m_process = -1;
    bool m_isHeld = true;
    bool m_hasEnded = false;
};
