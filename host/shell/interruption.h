#pragma once

namespace HostShell {

/// While it lives, the signals that ask a program to end (Ctrl-C, a shutdown, a closed terminal) end the disk work in
/// good order, so that nothing half done is left; the program ends by the signal afterwards.
class Interruption
{
public:
    Interruption();

    /// The signals do again what they did before.
    ~Interruption();

    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    static bool hasHappened() noexcept;

    /// Ends the program by the signal that has come.
    [[noreturn]] static void end();
};

} // namespace HostShell
