#include "MessagePort.h"

#include "AppRegistry.h"
#include "LeafLock.h"
#include "LooperLock.h"
#include "Message.h"
#include "MessageDelivery.h"

#include <algorithm>
#include <utility>

namespace {

// Counts for as long as it lives, also where a killed thread leaves by unwinding.
class Counted {
public:
    explicit Counted(int32& count) : fCount(count) { ++fCount; }
    ~Counted() { --fCount; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    int32& fCount;
};

} // namespace

std::shared_ptr<MessagePort> MessagePort::Make(int32 capacity)
{
    const std::shared_ptr<MessagePort> port(new MessagePort(capacity));
    // Not in the constructor, where nobody owns the port yet.
    port->fId = AppRegistry::Instance().AddPort(port);
    return port;
}

MessagePort::MessagePort(int32 capacity)
    : fCapacity(static_cast<size_t>(std::max<int32>(capacity, 1)))
{
}

MessagePort::~MessagePort() = default;

status_t MessagePort::Push(std::unique_ptr<BMessage> message, bigtime_t timeout)
{
    {
        const LeafLock lock(fLock);
        if (fState != B_OK)
            return fState;
        // Nearly always there is room, and no wait to be prepared.
        if (fMessages.size() < fCapacity) {
            Append(std::move(message));
            return B_OK;
        }
    }
    return timeout > 0 ? PushWaiting(std::move(message), timeout)
                       : static_cast<status_t>(B_WOULD_BLOCK);
}

status_t MessagePort::PushWaiting(std::unique_ptr<BMessage> message, bigtime_t timeout)
{
    const Deadline deadline(timeout);
    const LeafLock lock(fLock, LeafLock::kWaits);
    const Counted waiting(fWaitingForRoom);
    bool inTime = true;
    while (fState == B_OK && fMessages.size() >= fCapacity) {
        if (!inTime)
            return B_TIMED_OUT;
        inTime = deadline.Wait(fRoom, fLock);
    }
    if (fState == B_OK)
        Append(std::move(message));
    return fState;
}

void MessagePort::Append(std::unique_ptr<BMessage> message)
{
    fMessages.push_back(std::move(message));
    fArrived.notify_one();
}

status_t MessagePort::PushAlways(std::unique_ptr<BMessage> message)
{
    const LeafLock lock(fLock);
    if (fState != B_OK)
        return fState;
    Append(std::move(message));
    return B_OK;
}

status_t MessagePort::PushLatest(std::unique_ptr<BMessage> message)
{
    std::unique_ptr<BMessage> replaced; // ends after the lock
    const LeafLock lock(fLock);
    if (fState != B_OK)
        return fState;
    replaced = TakeReplaced(*message);
    Append(std::move(message));
    return B_OK;
}

std::unique_ptr<BMessage> MessagePort::TakeReplaced(BMessage& message)
{
    const int32 token = MessageAccess::Delivery(message).token;
    // From the newest back, and not past a message that must keep its place: a click between two
    // movements happened where the first one ended.
    for (auto at = fMessages.rbegin(); at != fMessages.rend(); ++at) {
        const MessageDelivery& older = MessageAccess::Delivery(**at);
        if (!older.mayBeReplaced)
            return nullptr;
        if ((*at)->what != message.what || older.token != token)
            continue;
        std::unique_ptr<BMessage> replaced = std::move(*at);
        fMessages.erase(std::next(at).base());
        return replaced;
    }
    return nullptr;
}

status_t MessagePort::Pop(bigtime_t timeout, std::unique_ptr<BMessage>& message)
{
    {
        const LeafLock lock(fLock);
        const status_t status = Take(message);
        if (status != B_WOULD_BLOCK || timeout <= 0)
            return status;
    }
    const Deadline deadline(timeout);
    const LeafLock lock(fLock, LeafLock::kWaits);
    bool inTime = true;
    for (;;) {
        const status_t status = Take(message);
        if (status != B_WOULD_BLOCK)
            return status;
        if (!inTime)
            return B_TIMED_OUT;
        inTime = deadline.Wait(fArrived, fLock);
    }
}

status_t MessagePort::Take(std::unique_ptr<BMessage>& message)
{
    if (fMessages.empty()) {
        if (fState != B_OK)
            return fState;
        // A wake-up is told once, and only where no message is there to be told instead.
        return std::exchange(fWoken, false) ? B_INTERRUPTED : B_WOULD_BLOCK;
    }
    message = std::move(fMessages.front());
    fMessages.pop_front();
    // All of them: one alone may be just about to give up, and the others would go on waiting
    // beside free room. Nearly always nobody waits, so it is looked at first.
    if (fWaitingForRoom > 0)
        fRoom.notify_all();
    return B_OK;
}

void MessagePort::Wake()
{
    const LeafLock lock(fLock);
    fWoken = true;
    fArrived.notify_one();
}

void MessagePort::Close(status_t reason)
{
    std::deque<std::unique_ptr<BMessage>> dropped;
    {
        const LeafLock lock(fLock);
        if (fState != B_OK)
            return;
        fState = reason;
        // They end behind the lock: one that is owed a reply closes its sender's port, which has a
        // lock of the same rank.
        dropped.swap(fMessages);
        fArrived.notify_all();
        fRoom.notify_all();
    }
    AppRegistry::Instance().RemovePort(fId);
    for (const auto& message : dropped)
        MessageAccess::Fail(*message, reason);
}
