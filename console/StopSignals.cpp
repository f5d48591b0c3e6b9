#include "console/StopSignals.h"

namespace {

constexpr int kSignals[] = { SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE };

} // namespace

StopSignals::StopSignals()
{
    sigemptyset(&signals);
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
    Kill();
}

int32 StopSignals::Action()
{
    sigwait(&signals, &received);
    return received;
}

bool StopSignals::PipeIsBroken()
{
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}
