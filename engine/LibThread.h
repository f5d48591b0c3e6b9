// A thread that runs Action() and reports its end by a message.
#pragma once

#include <Messenger.h>
#include <OS.h>

// The program's general thread base: a subclass overrides Action().
//
// Idle --Go()--> Running --Action() returns, or Kill()--> Idle. The same object may Go() again.
//
// A subclass with members that Action() uses calls Kill() in its own destructor: when the base's
// destructor ends the thread, those members are gone already.
class LibThread {
public:
    LibThread() = default;
    // Ends a thread that still runs, then deletes the messenger.
    virtual ~LibThread();
    LibThread(const LibThread&) = delete;
    LibThread& operator=(const LibThread&) = delete;

    // The thread's work; its result becomes the status of the 'LThC' message. The base does nothing
    // and returns 0.
    virtual int32 Action();

    // Only in Idle; waits until a former thread has ended. Starts a thread of this name and
    // priority and owns messenger (may be null) from here on; that of a former run is deleted. With
    // wait, returns when the thread has ended. Returns the status of the kernel's start or wait.
    status_t Go(const char* name, BMessenger* messenger, const long& priority, const bool& wait);

    // These return the kernel's status: B_BAD_THREAD_ID, and nothing done, unless Running. Kill()
    // returns when the thread has ended.
    status_t Kill();
    status_t Suspend();
    status_t Resume();
    status_t SetPriority(long priority); // returns the former priority

    // The kernel's thread_state; 0 unless Running.
    int32 Status() const;
    // Writes the state to standard error as one line.
    void PrintToStream() const;

protected:
    thread_id thread = -1;
    // Null, or where the thread reports. Owned.
    BMessenger* messenger = nullptr;

private:
    static int32 StaticAction(void* self);
    int32 StartAction();
    void ReportEnd(const int32& result);
};
