// The program as a whole; there is one, and be_app points to it from its construction to its
// destruction. A looper whose loop runs in the thread that calls Run(). SIGTERM, SIGINT and SIGHUP
// become B_QUIT_REQUESTED, unless they were ignored when the program started.
//
// new --Run()--> running --Quit()--> Run() returns; then the program deletes it. Unlike other
// loopers it may stand on the stack.
#pragma once

#include "Looper.h"
#include "Messenger.h"

#include <memory>
#include <string>

class BApplication;
class SignalWatch;
struct app_info;

extern BApplication* be_app; // NULL where there is none
extern BMessenger be_app_messenger; // without a target then

class BApplication : public BLooper {
public:
    // The signature is a MIME type, "application/x-vnd.Maker-Program". A bad one (B_BAD_VALUE) or a
    // second application (B_NOT_ALLOWED) is reported in *error, by the first form with a line on
    // standard error and exit status 1.
    explicit BApplication(const char* signature);
    BApplication(const char* signature, status_t* error);
    // Quits what windows there are, without asking.
    ~BApplication() override;

    // Handles messages until Quit(). The first are ArgvReceived(), if the program has arguments,
    // and ReadyToRun(). The thread's id; B_NO_INIT after a failed construction.
    thread_id Run() override;
    // Makes Run() return; from another thread after the messages that wait. Deletes nothing, but a
    // BApplication that never ran.
    void Quit() override;
    // Asks every window (QuitRequested()), oldest first, and quits it; at the first that refuses
    // it stops and answers false. The application is unlocked meanwhile.
    bool QuitRequested() override;

    // Hooks, called in the application's thread.
    virtual void ReadyToRun(); // once
    virtual void ArgvReceived(int32 argc, char** argv); // argv[0]: the program; argv[argc]: NULL
    virtual void RefsReceived(BMessage* message); // entry_refs in "refs"
    virtual void AboutRequested();
    virtual void AppActivated(bool active);
    virtual void Pulse(); // when no other message waits, see SetPulseRate()
    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* handler) override;

    // Microseconds between two Pulse() calls, rounded down to tenths of a second; 0: none. At first
    // half a second.
    void SetPulseRate(bigtime_t rate);

    // The pointer's picture over the program's windows; from any thread, without the lock. 68 bytes
    // in the format of B_HAND_CURSOR; others, or NULL, change nothing.
    void SetCursor(const void* cursor);

    status_t GetAppInfo(app_info* info) const; // as BRoster::GetRunningAppInfo()

private:
    status_t Start(const char* signature);
    void PostArguments();
    void ReceiveArguments(const BMessage& message);
    bool QuitWindows(bool ask);
    bool QuitWindowsUnlocked(bool ask);

    status_t fStatus = B_NO_INIT;
    std::unique_ptr<SignalWatch> fSignals;
    bool fReadyToRun = false; // ReadyToRun() was called
};
