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
    int number = 0;
    sigwait(&signals, &number);
    return number;
}
