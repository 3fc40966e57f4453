#include "host/shell/interruption.h"

#include "host/core/paths/disk/work.h"
#include "host/shell/log_output.h"

#include <semaphore.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace HostShell {

namespace {

namespace Work = Kelvaris::System::Disk::Work;

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t theSignal = 0;

std::array<struct sigaction, signals.size()> before;

/// Counts the signals for the watcher: the one way to wake a thread that is allowed to a signal handler.
sem_t theNews;

sigset_t allSignals()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals)
        sigaddset(&set, signal);
    return set;
}

void note(int signal)
{
    const int error = errno;
    theSignal = signal;
    Work::cancel();
    sem_post(&theNews);
    errno = error;
}

} // namespace

Interruption::Interruption(std::function<void()> alsoEnd)
{
    sem_init(&theNews, 0, 0);
    if (alsoEnd) {
        // the signals go to the threads that work, where they end calls to the system that wait
        const sigset_t set = allSignals();
        sigset_t mask;
        pthread_sigmask(SIG_BLOCK, &set, &mask);
        m_watcher = std::thread{[this, alsoEnd = std::move(alsoEnd)] { watch(alsoEnd); }};
        pthread_sigmask(SIG_SETMASK, &mask, nullptr);
    }
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
    if (m_watcher.joinable()) {
        m_isOver = true;
        sem_post(&theNews);
        m_watcher.join();
    }
    sem_destroy(&theNews);
}

bool Interruption::hasHappened() noexcept
{
    return theSignal != 0;
}

void Interruption::end(const std::string& sentence)
{
    // another thread may be at it, and its signal ends this one as well
    static std::atomic_flag isEnding;
    while (isEnding.test_and_set())
        pause();
    complain(sentence);
    std::fflush(stdout);
    std::signal(theSignal, SIG_DFL);
    const sigset_t set = allSignals();
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    std::raise(theSignal);
    std::abort();
}

void Interruption::watch(const std::function<void()>& alsoEnd)
{
    for (;;) {
        while (sem_wait(&theNews) != 0) {
        }
        if (m_isOver)
            return;
        alsoEnd();
    }
}

} // namespace HostShell
