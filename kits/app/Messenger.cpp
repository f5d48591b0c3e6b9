#include "Messenger.h"

#include "AppRegistry.h"
#include "FileManager.h"
#include "Handler.h"
#include "KillGuard.h"
#include "Looper.h"
#include "LooperLock.h"
#include "Message.h"
#include "MessageDelivery.h"
#include "MessagePort.h"
#include "Roster.h"

#include <strings.h>
#include <unistd.h>

namespace {

status_t Resolve(const BHandler* handler, const BLooper* looper, LooperRecord& record)
{
    if (!handler && !looper)
        return B_BAD_VALUE;
    const BLooper* owner = handler ? handler->Looper() : looper;
    if (!owner)
        return B_BAD_HANDLER;
    // The handler may have changed its looper since the caller knew it.
    if (looper && owner != looper)
        return B_MISMATCHED_VALUES;
    record = AppRegistry::Instance().Looper(owner);
    if (!record.looper)
        return B_BAD_VALUE;
    return B_OK;
}

// *target is set only with B_OK.
status_t FindApplication(const char* signature, team_id team, BMessenger* target)
{
    app_info info;
    BMessenger found;
    if (!signature)
        return B_BAD_VALUE;
    if (be_roster->GetAppInfo(signature, &info) == B_OK)
        found = AppRegistry::Instance().Application();
    // No program of the platform: a looper of this one passes the messages on to the desktop.
    else if (strcasecmp(signature, kFileManagerSignature) == 0)
        found = FileManagerMessenger();
    if (!found.IsValid())
        return B_BAD_VALUE;
    if (team != -1 && team != found.Team())
        return B_MISMATCHED_VALUES;
    *target = found;
    return B_OK;
}

// Where one sender waits for one reply.
class ReplyPort {
public:
    ReplyPort() : fPort(MessagePort::Make(1)) { }
    // An answer that comes too late finds no port and goes nowhere.
    ~ReplyPort() { fPort->Close(B_BAD_PORT_ID); }
    ReplyPort(const ReplyPort&) = delete;
    ReplyPort& operator=(const ReplyPort&) = delete;

    MessagePort& Port() { return *fPort; }

private:
    const std::shared_ptr<MessagePort> fPort;
};

} // namespace

BMessenger::BMessenger(const char* signature, team_id team, status_t* result)
{
    const status_t status = FindApplication(signature, team, this);
    if (result)
        *result = status;
}

BMessenger::BMessenger(const BHandler* handler, const BLooper* looper, status_t* result)
{
    LooperRecord record;
    const status_t status = Resolve(handler, looper, record);
    if (result)
        *result = status;
    if (status == B_OK)
        *this = MessageAccess::Messenger(
            record.port->Id(), handler ? MessageAccess::Token(*handler) : 0);
}

status_t BMessenger::SendMessage(BMessage* message, BHandler* replyTo, bigtime_t timeout) const
{
    BMessenger address;
    const status_t status = MessageAccess::ReplyAddress(replyTo, address);
    return status == B_OK ? SendMessage(message, address, timeout) : status;
}

status_t BMessenger::SendMessage(uint32 command, BHandler* replyTo) const
{
    BMessage message(command);
    return SendMessage(&message, replyTo);
}

status_t BMessenger::SendMessage(BMessage* message, BMessenger replyTo, bigtime_t timeout) const
{
    CheckKilled();
    if (!message)
        return B_BAD_VALUE;
    SendOptions options;
    options.replyTo = replyTo;
    options.timeout = timeout;
    return MessageAccess::Send(*this, *message, options);
}

status_t BMessenger::SendMessage(
    BMessage* message, BMessage* reply, bigtime_t sendTimeout, bigtime_t replyTimeout) const
{
    CheckKilled();
    if (!message || !reply)
        return B_BAD_VALUE;
    const auto port = MessageAccess::Port(*this);
    // The looper would wait for an answer that only it can give.
    if (port && port->Reader() == find_thread(nullptr))
        return B_MESSAGE_TO_SELF;

    ReplyPort replyPort;
    SendOptions options;
    options.replyTo = MessageAccess::Messenger(replyPort.Port().Id(), 0);
    options.timeout = sendTimeout;
    options.wantsReply = true;
    if (const status_t status = MessageAccess::Send(*this, *message, options); status != B_OK)
        return status;
    std::unique_ptr<BMessage> answer;
    const status_t status = replyPort.Port().Pop(replyTimeout, answer);
    if (status == B_OK)
        MessageAccess::Swap(*reply, *answer);
    return status;
}

status_t BMessenger::SendMessage(uint32 command, BMessage* reply) const
{
    BMessage message(command);
    return SendMessage(&message, reply);
}

bool BMessenger::IsValid() const
{
    return MessageAccess::Port(*this) != nullptr;
}

bool BMessenger::IsTargetLocal() const
{
    return fTeam != -1 && fTeam == getpid();
}

BHandler* BMessenger::Target(BLooper** looper) const
{
    AppRegistry& registry = AppRegistry::Instance();
    BLooper* owner = IsTargetLocal() ? registry.LooperOfPort(fPort).looper : nullptr;
    if (looper)
        *looper = owner;
    return owner && fToken != 0 ? registry.Handler(fToken) : nullptr;
}

bool BMessenger::LockTarget() const
{
    return LockTargetWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BMessenger::LockTargetWithTimeout(bigtime_t timeout) const
{
    AppRegistry& registry = AppRegistry::Instance();
    const LooperRecord record = IsTargetLocal() ? registry.LooperOfPort(fPort) : LooperRecord();
    if (!record.looper)
        return B_BAD_PORT_ID;
    if (const status_t status = record.lock->Lock(timeout); status != B_OK)
        return status == B_BAD_VALUE ? static_cast<status_t>(B_BAD_PORT_ID) : status;
    // Looked up under the lock: the handler may have gone or changed its looper while this waited.
    if (fToken == 0 || registry.HandlerIn(fToken, record.looper))
        return B_OK;
    record.lock->Unlock();
    return B_BAD_HANDLER;
}
