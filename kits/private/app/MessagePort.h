// The queue of messages in front of one reader. Bounded for those who ask with Push(); what the
// kits must not lose goes past the bound. Its lock is a leaf: no message is copied, deleted or
// answered under it.
#pragma once

#include "Messenger.h"
#include "Mutex.h"

#include <atomic>
#include <deque>
#include <memory>

class MessagePort {
public:
    static std::shared_ptr<MessagePort> Make(int32 capacity); // known to the registry
    ~MessagePort();
    MessagePort(const MessagePort&) = delete;
    MessagePort& operator=(const MessagePort&) = delete;

    port_id Id() const { return fId; }
    // The thread that calls Pop(); B_ERROR while there is none.
    thread_id Reader() const { return fReader; }
    void SetReader(thread_id reader) { fReader = reader; }

    // Wait at most timeout microseconds for room: B_WOULD_BLOCK (0) or B_TIMED_OUT. After Close():
    // its reason, also for those that wait. A message that finds no place is deleted. Push() is a
    // kill point.
    status_t Push(std::unique_ptr<BMessage> message, bigtime_t timeout) EXCLUDES(fLock);
    // Never waits and takes any number.
    status_t PushAlways(std::unique_ptr<BMessage> message) EXCLUDES(fLock);
    // The same, in place of an older message as PostLatest() says.
    status_t PushLatest(std::unique_ptr<BMessage> message) EXCLUDES(fLock);

    // The oldest message. B_WOULD_BLOCK (timeout 0), B_TIMED_OUT; B_INTERRUPTED after Wake();
    // Close()'s reason once nothing is left. A kill point.
    status_t Pop(bigtime_t timeout, std::unique_ptr<BMessage>& message) EXCLUDES(fLock);
    void Wake() EXCLUDES(fLock);

    // From now on every call returns reason. Messages that wait are deleted; who waits for a reply
    // to one gets reason. Only the first call counts.
    void Close(status_t reason) EXCLUDES(fLock);

private:
    explicit MessagePort(int32 capacity);

    status_t PushWaiting(std::unique_ptr<BMessage> message, bigtime_t timeout) EXCLUDES(fLock);
    void Append(std::unique_ptr<BMessage> message) REQUIRES(fLock);
    status_t Take(std::unique_ptr<BMessage>& message) REQUIRES(fLock); // B_WOULD_BLOCK: none
    std::unique_ptr<BMessage> TakeReplaced(BMessage& message) REQUIRES(fLock);

    const size_t fCapacity;
    port_id fId = -1;
    std::atomic<thread_id> fReader = B_ERROR;
    Mutex fLock;
    std::deque<std::unique_ptr<BMessage>> fMessages GUARDED_BY(fLock);
    status_t fState GUARDED_BY(fLock) = B_OK; // the reason for closing, once it is closed
    bool fWoken GUARDED_BY(fLock) = false;
    int32 fWaitingForRoom GUARDED_BY(fLock) = 0;
    Condition fArrived;
    Condition fRoom;
};
