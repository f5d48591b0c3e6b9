#include "Invoker.h"

#include "OS.h"

BInvoker::BInvoker() = default;

BInvoker::BInvoker(BMessage* message, BMessenger target) : fMessage(message), fTarget(target) { }

BInvoker::BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper)
    : fMessage(message), fTarget(handler, looper)
{
}

BInvoker::~BInvoker() = default;

status_t BInvoker::SetMessage(BMessage* message)
{
    if (message != fMessage.get())
        fMessage.reset(message);
    return B_OK;
}

BMessage* BInvoker::Message() const
{
    return fMessage.get();
}

uint32 BInvoker::Command() const
{
    return fMessage ? fMessage->what : 0;
}

status_t BInvoker::SetTarget(const BHandler* handler, const BLooper* looper)
{
    if (!handler && !looper)
        return SetTarget(BMessenger());
    status_t status = B_OK;
    const BMessenger target(handler, looper, &status);
    return status == B_OK ? SetTarget(target) : status;
}

status_t BInvoker::SetTarget(BMessenger messenger)
{
    fTarget = messenger;
    return B_OK;
}

bool BInvoker::IsTargetLocal() const
{
    return fTarget.IsTargetLocal();
}

BHandler* BInvoker::Target(BLooper** looper) const
{
    return fTarget.Target(looper);
}

BMessenger BInvoker::Messenger() const
{
    return fTarget;
}

status_t BInvoker::SetHandlerForReply(BHandler* handler)
{
    fReplyTo = handler;
    return B_OK;
}

BHandler* BInvoker::HandlerForReply() const
{
    return fReplyTo;
}

status_t BInvoker::Invoke(BMessage* message)
{
    if (!message)
        message = fMessage.get();
    return message ? fTarget.SendMessage(message, fReplyTo, fTimeout) : B_BAD_VALUE;
}

status_t BInvoker::InvokeFrom(
    const void* source, const char* valueName, int32 value, const BMessage* message)
{
    const BMessage* original = message ? message : Message();
    if (!original)
        return B_BAD_VALUE;
    BMessage copy(*original);
    copy.AddInt64("when", system_time());
    copy.AddPointer("source", source);
    copy.AddInt32(valueName, value);
    return BInvoker::Invoke(&copy);
}

status_t BInvoker::SetTimeout(bigtime_t timeout)
{
    fTimeout = timeout;
    return B_OK;
}

bigtime_t BInvoker::Timeout() const
{
    return fTimeout;
}
