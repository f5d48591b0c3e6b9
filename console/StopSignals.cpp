#include "console/StopSignals.h"

StopSignals::StopSignals()
{
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
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
