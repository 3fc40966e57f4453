#include "host/shell/interruption.h"

#include "host/core/paths/disk/work.h"

#include <array>
#include <csignal>
#include <cstdlib>

namespace HostShell {

namespace {

namespace Work = Kelvaris::System::Disk::Work;

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t theSignal = 0;

std::array<struct sigaction, signals.size()> before;

void note(int signal)
{
    theSignal = signal;
    Work::cancel();
}

} // namespace

Interruption::Interruption()
{
    struct sigaction action
    {
    };
    action.sa_handler = note;
    for (std::size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals[i], nullptr, &before[i]);
        // what the caller has told the program to ignore stays ignored
        if (before[i].sa_handler != SIG_IGN)
            sigaction(signals[i], &action, nullptr);
    }
}

Interruption::~Interruption()
{
    for (std::size_t i = 0; i < signals.size(); ++i)
        sigaction(signals[i], &before[i], nullptr);
}

bool Interruption::hasHappened() noexcept
{
    return theSignal != 0;
}

void Interruption::end()
{
    std::signal(theSignal, SIG_DFL);
    std::raise(theSignal);
    std::abort();
}

} // namespace HostShell
