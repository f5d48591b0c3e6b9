// A thread that takes messages from a bounded port, one after the other, and hands each to one of
// its handlers; it is itself the first of them. The looper is locked while a message is handled and
// unlocked between messages.
//
// new --Run()--> running --Quit()--> deleted. Made with new, locked by the thread that made it;
// Run() gives that lock back. Never deleted but by Quit().
//
// Order of locks: a looper's lock comes before every lock inside the kits; several loopers' locks
// are taken in an order that the program chooses. The kits' own locks (port, registries) are
// leaves.
#pragma once

#include "AppDefs.h"
#include "Handler.h"
#include "Message.h"
#include "Mutex.h"
#include "OS.h"

#include <memory>
#include <vector>

class LooperLock;
class MessagePort;
struct LooperRecord;

constexpr int32 B_LOOPER_PORT_DEFAULT_CAPACITY = 100;

class CAPABILITY("looper") BLooper : public BHandler {
public:
    // portCapacity: messages that may wait before senders have to.
    explicit BLooper(const char* name = nullptr, int32 priority = B_NORMAL_PRIORITY,
        int32 portCapacity = B_LOOPER_PORT_DEFAULT_CAPACITY);
    // Handlers that are still in it are not deleted.
    ~BLooper() override;

    // Starts the thread and unlocks. Its id; a second call changes nothing. Or the kernel's error:
    // then the looper is unlocked too, as one that never ran, and may be run again.
    virtual thread_id Run();
    // Called by its own thread: deletes the looper, ends the thread, never returns. By another
    // one: handles the messages that wait, then does the same, and returns when the thread has
    // ended. The caller holds the lock (else a line on standard error); afterwards it no longer
    // does. A looper that never ran is deleted at once.
    virtual void Quit() ASSERT_HELD(this) RELEASE();
    // Called for B_QUIT_REQUESTED: whether to Quit() now. This version: true.
    virtual bool QuitRequested();

    // Put a copy of the message into the port, without waiting: B_WOULD_BLOCK if it is full,
    // B_BAD_PORT_ID if the looper is gone. It goes to the looper itself; with the handler argument
    // to that one (B_MISMATCHED_VALUES if it is in another looper), NULL meaning the
    // looper. Replies go to replyTo, with NULL to the application.
    status_t PostMessage(uint32 command);
    status_t PostMessage(const BMessage* message);
    status_t PostMessage(uint32 command, BHandler* handler, BHandler* replyTo = nullptr);
    status_t PostMessage(const BMessage* message, BHandler* handler, BHandler* replyTo = nullptr);
    // Hands the message to the handler; loopers that know messages of their own override it.
    virtual void DispatchMessage(BMessage* message, BHandler* handler);
    void MessageReceived(BMessage* message) override;
    // The message that is being handled, for the looper's own thread; NULL between messages.
    BMessage* CurrentMessage() const { return fCurrent.get(); }
    BMessage* DetachCurrentMessage(); // it is the caller's now, who deletes it

    // The lock counts: the thread that holds it may lock again and unlocks as often. Safe to call
    // for a looper that was deleted: false. A thread that waits may be killed, one that holds the
    // lock is only killed when it lets go. Waiting threads get the lock in the order they came. For
    // a block there is BAutolock; these are for what ends with Quit(), which unlocks.
    bool Lock() TRY_ACQUIRE(true);
    void Unlock() RELEASE(); // only by the thread that holds the lock
    bool IsLocked() const; // by the calling thread
    int32 CountLocks() const; // of the thread that holds it

    thread_id Thread() const { return fThread; } // B_ERROR before Run()
    team_id Team() const;
    static BLooper* LooperForThread(thread_id thread); // NULL if it is no looper's

    // Handlers. Called with the looper locked.
    void AddHandler(BHandler* handler); // only one that is in no looper
    bool RemoveHandler(BHandler* handler); // false if it is not in this one

protected:
    // Called after each message, still locked; a window flushes its drawing here.
    virtual void MessageHandled();
    // With true the application asks this looper before it quits, and quits it. Windows do.
    void SetAskedToQuit(bool asked);
    // Period in microseconds of B_PULSE messages the looper hands to itself when no other message
    // waits; 0 for none. From any thread.
    void SetPulse(bigtime_t period);
    bigtime_t PulsePeriod() const { return fPulse; }

private:
    friend class BApplication;
    friend class MessageAccess;

    static int32 ThreadEntry(void* looper);
    void Loop(); // until fEnded
    std::unique_ptr<BMessage> NextMessage(MessagePort& port, bigtime_t& nextPulse);
    void Handle(std::unique_ptr<BMessage> message);
    BHandler* TargetOf(BMessage& message) const;
    void HandleQuitRequest(BMessage& message);
    static status_t Post(
        const BMessage* message, const LooperRecord& record, int32 token, BHandler* replyTo);
    void QuitFromOutside();
    void AssertLocked() const;

    const int32 fPriority;
    const std::shared_ptr<LooperLock> fLock; // outlives the looper while somebody waits for it
    const std::shared_ptr<MessagePort> fPort;
    std::vector<BHandler*> fHandlers;
    std::unique_ptr<BMessage> fCurrent;
    std::atomic<thread_id> fThread = B_ERROR;
    std::atomic<bigtime_t> fPulse = 0;
    bool fEnded = false; // only its own thread reads and writes it
};
