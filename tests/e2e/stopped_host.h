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
    /// Starts the program, with its output and errors in files; it waits before its first step.
    explicit StoppedHost(std::vector<std::string> words);

    /// The same, with a terminal of that width for its errors, which is its controlling terminal as well.
    StoppedHost(std::vector<std::string> words, unsigned short columns);

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

    /// Lets it run to its end.
    /// @return  the signal that ended it; 0 when it ended by itself
    int awaitEnd();

    /// Sends the signal and lets it run to its end.
    /// @return  as above
    int interrupt(int signal);

    /// Sends the signal again and again, until the program has ended.
    /// @return  as above
    int insist(int signal);

    /// Presses Ctrl-C on the terminal of the program, which is held, and lets it run to its end.
    /// @return  as above
    int pressCtrlC();

    std::string output() const;

    /// What it has written to standard error so far.
    std::string errors();

private:
    void start(std::vector<std::string> words, const std::string& errors);
    void letGo();

    TemporaryFolder m_folder;
    int m_terminal = -1; ///< the end of who sits before it
    std::string m_shown; ///< what was read there
    pid_t m_process = -1;
    bool m_isHeld = true;
    bool m_hasEnded = false;
};
