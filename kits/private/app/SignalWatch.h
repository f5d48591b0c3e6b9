// Makes SIGTERM, SIGINT and SIGHUP a request to quit, so that Ctrl-C in a terminal ends the program
// as its menu does. A signal handler may do next to nothing: it writes into a pipe, and a thread
// posts the message. Signals that the program was started to ignore (nohup) stay ignored.
#pragma once

#include "Messenger.h"

#include <csignal>

class SignalWatch {
public:
    explicit SignalWatch(const BMessenger& target); // only one at a time
    ~SignalWatch(); // the signals are as before
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

private:
    static int32 ThreadEntry(void* watch);
    void Watch();

    static constexpr int kSignals[] = { SIGTERM, SIGINT, SIGHUP };

    const BMessenger fTarget;
    thread_id fThread = B_ERROR;
    struct sigaction fBefore[3] = {};
};
