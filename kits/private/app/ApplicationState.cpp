#include "ApplicationState.h"

#include "AppDefs.h"
#include "KillGuard.h"
#include "LeafLock.h"
#include "Message.h"
#include "MessageDelivery.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr size_t kImageSize = sizeof(CursorState::image);

bool IsImage(const void* data)
{
    // 16 pixels wide and high, one bit each, and the point that points inside.
    const auto* bytes = static_cast<const uint8*>(data);
    return bytes && bytes[0] == 16 && bytes[1] == 1 && bytes[2] < 16 && bytes[3] < 16;
}

Mutex gLock;
CursorState gCursor GUARDED_BY(gLock);
void (*gCursorHook)() GUARDED_BY(gLock) = nullptr;
std::vector<std::string> gArguments GUARDED_BY(gLock);
std::optional<app_info> gApplication GUARDED_BY(gLock);

} // namespace

// clang-format off
const unsigned char B_HAND_CURSOR[] = {
    16, 1, 1, 4,
    0x00, 0x00, 0x0c, 0x00, 0x12, 0x00, 0x12, 0x00, 0x13, 0x80, 0x12, 0x70, 0x12, 0x4c, 0x72, 0x4a,
    0x90, 0x0a, 0x88, 0x01, 0x48, 0x01, 0x20, 0x01, 0x10, 0x02, 0x08, 0x02, 0x04, 0x04, 0x07, 0xfc,
    0x00, 0x00, 0x0c, 0x00, 0x1e, 0x00, 0x1e, 0x00, 0x1f, 0x80, 0x1f, 0xf0, 0x1f, 0xfc, 0x7f, 0xfe,
    0xff, 0xfe, 0xff, 0xff, 0x7f, 0xff, 0x3f, 0xff, 0x1f, 0xfe, 0x0f, 0xfe, 0x07, 0xfc, 0x07, 0xfc,
};
// clang-format on

static_assert(sizeof(B_HAND_CURSOR) == kImageSize);

CursorState CurrentCursor()
{
    const LeafLock lock(gLock);
    return gCursor;
}

void SetCursorHook(void (*changed)())
{
    {
        const LeafLock lock(gLock);
        gCursorHook = changed;
    }
    if (changed)
        changed();
}

void SetCursorImage(const void* data)
{
    if (!IsImage(data))
        return;
    // The hook is called without the lock, so that it may read the state; of several calls at once
    // the last one finds the last state.
    void (*hook)() = nullptr;
    {
        const LeafLock lock(gLock);
        gCursor.isSet = true;
        memcpy(gCursor.image, data, kImageSize);
        hook = gCursorHook;
    }
    if (hook)
        hook();
}

std::vector<std::string> ProgramArguments()
{
    {
        const LeafLock lock(gLock);
        if (!gArguments.empty())
            return gArguments;
    }
    std::vector<std::string> arguments;
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    for (std::string argument; std::getline(file, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

void SetProgramArguments(std::vector<std::string> arguments)
{
    const LeafLock lock(gLock);
    gArguments.swap(arguments);
}

std::optional<app_info> RunningApplication()
{
    const LeafLock lock(gLock);
    return gApplication;
}

void SetRunningApplication(const std::optional<app_info>& info)
{
    const LeafLock lock(gLock);
    gApplication = info;
}

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
