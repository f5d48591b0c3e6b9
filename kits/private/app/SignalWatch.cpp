#include "SignalWatch.h"

#include "AppDefs.h"
#include "KillGuard.h"
#include "Message.h"
#include "MessageDelivery.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr char kQuit = 'q';
constexpr char kEnd = 'e';

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
};

// Made once and never closed: a handler may still be about to write while its watch ends.
const Pipe& SignalPipe()
{
    static const Pipe sPipe = [] {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            return Pipe();
        fcntl(ends[1], F_SETFL, O_NONBLOCK);
        return Pipe { ends[0], ends[1] };
    }();
    return sPipe;
}

std::atomic<int> gWriteEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free, "used in a signal handler");

// The pipe does not block when it is full: it holds a request to quit already.
void OnSignal(int)
{
    const int error = errno;
    while (write(gWriteEnd, &kQuit, 1) < 0 && errno == EINTR) { }
    errno = error;
}

// Signals that came when nobody watched any more.
void Drain(int readEnd)
{
    char byte = 0;
    pollfd source = { readEnd, POLLIN, 0 };
    while (poll(&source, 1, 0) > 0 && read(readEnd, &byte, 1) == 1) { }
}

} // namespace

SignalWatch::SignalWatch(const BMessenger& target) : fTarget(target)
{
    const KillGuard guard;
    const Pipe& pipe = SignalPipe();
    if (pipe.readEnd < 0) {
        fprintf(stderr, "Signals not watched <%s>\n", strerror(errno));
        return;
    }
    // Of a watch before this one: it would end the new application at once.
    Drain(pipe.readEnd);
    gWriteEnd = pipe.writeEnd;
    fThread = spawn_thread(ThreadEntry, "signals", B_NORMAL_PRIORITY, this);
    if (fThread < B_OK) { // with handlers that nobody hears nothing would end the program
        fprintf(stderr, "Cannot start thread <signals>\n");
        return;
    }
    resume_thread(fThread);

    struct sigaction action = {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    for (size_t i = 0; i < std::size(kSignals); ++i) {
        sigaction(kSignals[i], nullptr, &fBefore[i]);
        // Started by nohup, or in the background of a shell: it is not to end with its terminal.
        if (fBefore[i].sa_handler != SIG_IGN)
            sigaction(kSignals[i], &action, nullptr);
    }
}

SignalWatch::~SignalWatch()
{
    if (fThread < B_OK)
        return;
    const KillGuard guard;
    for (size_t i = 0; i < std::size(kSignals); ++i)
        sigaction(kSignals[i], &fBefore[i], nullptr);
    // A full pipe is emptied by the thread, so the byte gets in at last.
    while (write(SignalPipe().writeEnd, &kEnd, 1) < 0 && (errno == EINTR || errno == EAGAIN)) { }
    status_t value = B_OK;
    wait_for_thread(fThread, &value);
}

int32 SignalWatch::ThreadEntry(void* watch)
{
    static_cast<SignalWatch*>(watch)->Watch();
    return B_OK;
}

void SignalWatch::Watch()
{
    char byte = 0;
    while (byte != kEnd) {
        const ssize_t length = read(SignalPipe().readEnd, &byte, 1);
        if (length == 0 || (length < 0 && errno != EINTR))
            return;
        if (length == 1 && byte == kQuit)
            PostAlways(fTarget, BMessage(B_QUIT_REQUESTED));
    }
}
