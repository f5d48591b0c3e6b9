#include "Looper.h"

#include "AppRegistry.h"
#include "Autolock.h"
#include "Check.h"
#include "LooperLock.h"
#include "MessageDelivery.h"
#include "MessagePort.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

BLooper::BLooper(const char* name, int32 priority, int32 portCapacity)
    : BHandler(name), fPriority(priority), fLock(std::make_shared<LooperLock>()),
      fPort(MessagePort::Make(portCapacity))
{
    LooperRecord record;
    record.looper = this;
    record.lock = fLock;
    record.port = fPort;
    record.token = fToken;
    AppRegistry::Instance().AddLooper(record);
    // Known to the registry by now: AddHandler() checks that the lock is held, and asks there.
    AddHandler(this);
    SetNextHandler(nullptr);
}

BLooper::~BLooper()
{
    TARVEX_CHECK(fThread == B_ERROR || fEnded || fThread == find_thread(nullptr))
        << "a looper that runs is ended by Quit()";
    // Still under the lock: a handler that ends just now takes itself out under the same.
    fLock->Claim();
    for (BHandler* handler : fHandlers) {
        handler->fNextHandler = nullptr;
        handler->fLooper = nullptr;
    }
    // From here on nobody finds it any more; those that wait for its lock or for room in its port
    // give up.
    AppRegistry::Instance().RemoveLooper(this);
    fLock->Die();
    fPort->Close(B_BAD_PORT_ID);
    if (fCurrent)
        MessageAccess::Fail(*fCurrent, B_BAD_PORT_ID);
}

thread_id BLooper::Run()
{
    if (fThread != B_ERROR)
        return fThread;
    const thread_id thread = spawn_thread(ThreadEntry, Name() ? Name() : "looper", fPriority, this);
    if (thread < B_OK) {
        fLock->Release(); // who waits for it would wait for ever
        return thread;
    }
    fThread = thread;
    fPort->SetReader(thread);
    AppRegistry::Instance().SetRuns(this);
    resume_thread(thread);
    fLock->Release(); // nothing of *this may be used from here on
    return thread;
}

int32 BLooper::ThreadEntry(void* looper)
{
    static_cast<BLooper*>(looper)->Loop();
    return B_OK;
}

void BLooper::Loop()
{
    const std::shared_ptr<MessagePort> port = fPort;
    bigtime_t nextPulse = 0;
    while (!fEnded) {
        std::unique_ptr<BMessage> message = NextMessage(*port, nextPulse);
        if (!message)
            continue;
        const BAutolock lock(this);
        if (!lock.IsLocked())
            return;
        Handle(std::move(message));
    }
}

// NULL if it was woken for another reason than a message. *nextPulse is the time of the next
// B_PULSE, 0 if none was planned.
std::unique_ptr<BMessage> BLooper::NextMessage(MessagePort& port, bigtime_t& nextPulse)
{
    const bigtime_t period = fPulse;
    if (period > 0 && nextPulse == 0)
        nextPulse = system_time() + period;
    const bigtime_t timeout =
        period > 0 ? std::max<bigtime_t>(nextPulse - system_time(), 0) : B_INFINITE_TIMEOUT;
    std::unique_ptr<BMessage> message;
    const status_t status = port.Pop(timeout, message);
    if (status == B_TIMED_OUT || status == B_WOULD_BLOCK) {
        // Counted from now: a looper that was busy does not make up for pulses that it missed.
        nextPulse = system_time() + period;
        message = std::make_unique<BMessage>(B_PULSE);
    } else if (status == B_INTERRUPTED) {
        nextPulse = 0; // the period changed
    } else if (status != B_OK) {
        fEnded = true;
    }
    return message;
}

void BLooper::Handle(std::unique_ptr<BMessage> message)
{
    fCurrent = std::move(message);
    BMessage* current = fCurrent.get();
    BHandler* target = TargetOf(*current);
    if (!target)
        MessageAccess::Fail(*current, B_BAD_HANDLER);
    else if (target == this && current->what == _QUIT_)
        Quit();
    else
        DispatchMessage(current, target);
    fCurrent.reset();
    MessageHandled();
}

// NULL for a handler that was deleted or taken out after the message was sent.
BHandler* BLooper::TargetOf(BMessage& message) const
{
    const int32 token = MessageAccess::Delivery(message).token;
    if (token != 0)
        return AppRegistry::Instance().HandlerIn(token, this);
    return const_cast<BLooper*>(this);
}

void BLooper::DispatchMessage(BMessage* message, BHandler* handler)
{
    if (handler == this && message->what == B_QUIT_REQUESTED)
        HandleQuitRequest(*message);
    else
        handler->MessageReceived(message);
}

void BLooper::HandleQuitRequest(BMessage& message)
{
    const bool quits = QuitRequested();
    if (message.IsSourceWaiting()) {
        BMessage reply(B_REPLY);
        reply.AddBool("result", quits);
        message.SendReply(&reply);
    }
    if (quits)
        Quit();
}

void BLooper::MessageReceived(BMessage* message)
{
    BHandler::MessageReceived(message);
}

void BLooper::MessageHandled() { }

bool BLooper::QuitRequested()
{
    return true;
}

// Not analysed: the lock ends with the looper.
void BLooper::Quit() NO_THREAD_SAFETY_ANALYSIS
{
    if (!IsLocked()) {
        fprintf(stderr, "Looper <%s> quit without being locked\n", Name() ? Name() : "");
        if (!Lock())
            return;
    }
    const thread_id thread = fThread;
    if (thread != B_ERROR && thread != find_thread(nullptr)) {
        QuitFromOutside();
        return;
    }
    // In its own thread Loop() has no object to go back to, so the thread ends right here.
    delete this;
    if (thread != B_ERROR)
        exit_thread(B_OK);
}

void BLooper::QuitFromOutside()
{
    const thread_id thread = fThread;
    const std::shared_ptr<LooperLock> lock = fLock;
    // Past the bound: a full port must not keep the looper alive.
    PostAlways(MessageAccess::Messenger(fPort->Id(), fToken), BMessage(_QUIT_));
    lock->UnlockAll();
    status_t value = B_OK;
    wait_for_thread(thread, &value);
}

// Those that may be called for a looper that is gone call no other member function: already the
// call of one may look at the object.
status_t BLooper::PostMessage(uint32 command)
{
    const BMessage message(command);
    const LooperRecord record = AppRegistry::Instance().Looper(this);
    return record.looper ? Post(&message, record, record.token, nullptr) : B_BAD_PORT_ID;
}

status_t BLooper::PostMessage(const BMessage* message)
{
    const LooperRecord record = AppRegistry::Instance().Looper(this);
    return record.looper ? Post(message, record, record.token, nullptr) : B_BAD_PORT_ID;
}

status_t BLooper::PostMessage(uint32 command, BHandler* handler, BHandler* replyTo)
{
    const BMessage message(command);
    return PostMessage(&message, handler, replyTo);
}

status_t BLooper::PostMessage(const BMessage* message, BHandler* handler, BHandler* replyTo)
{
    const LooperRecord record = AppRegistry::Instance().Looper(this);
    if (!record.looper)
        return B_BAD_PORT_ID;
    if (handler && handler->Looper() != this)
        return B_MISMATCHED_VALUES;
    return Post(message, record, handler ? handler->fToken : 0, replyTo);
}

status_t BLooper::Post(
    const BMessage* message, const LooperRecord& record, int32 token, BHandler* replyTo)
{
    if (!message)
        return B_BAD_VALUE;
    SendOptions options;
    const status_t status = MessageAccess::ReplyAddress(replyTo, options.replyTo);
    if (status != B_OK)
        return status;
    return MessageAccess::Send(
        MessageAccess::Messenger(record.port->Id(), token), *message, options);
}

BMessage* BLooper::DetachCurrentMessage()
{
    return fCurrent.release();
}

bool BLooper::Lock()
{
    const LooperRecord record = AppRegistry::Instance().Looper(this);
    return record.looper && record.lock->Lock(B_INFINITE_TIMEOUT) == B_OK;
}

void BLooper::Unlock()
{
    const LooperRecord record = AppRegistry::Instance().Looper(this);
    if (record.looper)
        record.lock->Unlock();
}

bool BLooper::IsLocked() const
{
    const LooperRecord record = AppRegistry::Instance().Looper(this);
    return record.looper && record.lock->IsHeld();
}

int32 BLooper::CountLocks() const
{
    return fLock->Count();
}

team_id BLooper::Team() const
{
    return getpid();
}

BLooper* BLooper::LooperForThread(thread_id thread)
{
    return thread < B_OK ? nullptr : AppRegistry::Instance().LooperOfThread(thread).looper;
}

void BLooper::AddHandler(BHandler* handler)
{
    AssertLocked();
    if (!handler || handler->Looper())
        return;
    fHandlers.push_back(handler);
    handler->fLooper = this;
    handler->fNextHandler = this;
}

bool BLooper::RemoveHandler(BHandler* handler)
{
    AssertLocked();
    if (!handler || handler->Looper() != this || handler == this)
        return false;
    std::erase(fHandlers, handler);
    // A chain that led over the handler goes straight on to the looper.
    for (BHandler* other : fHandlers) {
        if (other->fNextHandler == handler)
            other->fNextHandler = this;
    }
    handler->fNextHandler = nullptr;
    handler->fLooper = nullptr;
    return true;
}

void BLooper::SetAskedToQuit(bool asked)
{
    AppRegistry::Instance().SetAskedToQuit(this, asked);
}

void BLooper::SetPulse(bigtime_t period)
{
    fPulse = std::max<bigtime_t>(period, 0);
    // A looper that waits for the old period counts anew.
    fPort->Wake();
}

void BLooper::AssertLocked() const
{
    TARVEX_CHECK(IsLocked()) << "looper <" << (Name() ? Name() : "") << ">";
}
