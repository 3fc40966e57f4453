#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace HostShell {

/// While it lives, the signals that ask a program to end (Ctrl-C, a shutdown, a closed terminal) end the disk work in
/// good order, so that nothing half done is left. Whoever did the work ends the program afterwards:
///
///     const Interruption interruption;
///     const auto result = work();
///     if (Interruption::hasHappened())
///         Interruption::end("interrupted");
class Interruption
{
public:
    /// @param alsoEnd  ends what is no disk work, once for each signal that comes, on a thread of its own
    explicit Interruption(std::function<void()> alsoEnd = {});

    /// The signals do again what they did before.
    ~Interruption();

    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    static bool hasHappened() noexcept;

    /// Says that sentence on standard error and ends the program by the signal that has come.
    [[noreturn]] static void end(const std::string& sentence);

private:
    void watch(const std::function<void()>& alsoEnd);

    std::atomic<bool> m_isOver{false};
    std::thread m_watcher;
};

} // namespace HostShell
