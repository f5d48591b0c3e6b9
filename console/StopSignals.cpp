#include "console/StopSignals.h"

#include <unistd.h>

namespace {

// Ends the wait for the others: sigwait() is no kill point. One that nobody waited for any more may
// be left.
int EndSignal()
{
    return SIGRTMIN + 7;
}

constexpr int kSignals[] = { SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE };

} // namespace

StopSignals::StopSignals()
{
    sigemptyset(&signals);
    sigaddset(&signals, EndSignal());
    for (const int signal : kSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN)
            sigaddset(&signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

StopSignals::~StopSignals()
{
    isEnding = true;
    if (Status() != 0)
        kill(getpid(), EndSignal());
    Kill();
}

int32 StopSignals::Action()
{
    do
        sigwait(&signals, &received);
    while (received == EndSignal() && !isEnding);
    if (isEnding)
        snooze(B_INFINITE_TIMEOUT); // until it is killed
    return received;
}

bool StopSignals::PipeIsBroken()
{
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}
