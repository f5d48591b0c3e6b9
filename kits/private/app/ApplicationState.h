// What a process has one of and BApplication speaks for. From any thread.
#pragma once

#include "Messenger.h"
#include "Roster.h"
#include "SupportDefs.h"

#include <csignal>
#include <optional>
#include <string>
#include <vector>

// The pointer's picture as the program wants it, between BApplication::SetCursor() and the display
// server, which may start later or never.
struct CursorState {
    bool isSet = false; // the program chose a picture: image holds it
    uint8 image[68] = {}; // in the format of B_HAND_CURSOR
};

CursorState CurrentCursor();

// Changed() is called after each change, in the thread that made it, and at once by this call; it
// reads CurrentCursor() and must not wait. NULL: none. There is one hook.
void SetCursorHook(void (*changed)());

// For BApplication. Copies the 68 bytes; other data changes nothing.
void SetCursorImage(const void* data);

// The command line, which reaches BApplication without passing through its constructor: the
// process's own arguments, the program's name first, or those set below. Empty if /proc tells
// nothing.
std::vector<std::string> ProgramArguments();

// Stand in for the process's own from now on; an empty list brings those back. For tests.
void SetProgramArguments(std::vector<std::string> arguments);

// What BApplication tells the roster about itself; nothing: no application runs in this process.
std::optional<app_info> RunningApplication();
void SetRunningApplication(const std::optional<app_info>& info);

// Makes SIGTERM, SIGINT and SIGHUP a request to quit, so that Ctrl-C in a terminal ends the program
// as its menu does. A signal handler may do next to nothing: it writes into a pipe, and a thread
// posts the message. Signals that the program was started to ignore (nohup) stay ignored.
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
