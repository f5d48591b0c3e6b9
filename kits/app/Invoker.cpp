#include "Invoker.h"

#include "OS.h"

BInvoker::BInvoker() = default;

BInvoker::BInvoker(BMessage* message, BMessenger target) : fMessage(message), fTarget(target) { }

BInvoker::~BInvoker() = default;

status_t BInvoker::SetMessage(BMessage* message)
{
    // It may be given what it has, which must not be deleted then.
    if (message != fMessage.get())
        fMessage.reset(message);
    return B_OK;
}

BMessage* BInvoker::Message() const
{
    return fMessage.get();
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

BMessenger BInvoker::Messenger() const
{
    return fTarget;
}

status_t BInvoker::Invoke(BMessage* message)
{
    if (!message)
        message = fMessage.get();
    return message ? fTarget.SendMessage(message) : B_BAD_VALUE;
}

status_t BInvoker::InvokeFrom(
    const void* source, const char* valueName, int32 value, const BMessage* message)
{
    const BMessage* original = message ? message : Message();
    if (!original)
        return B_BAD_VALUE;
    // The fields of this time go into a copy: in the original they would add up.
    BMessage copy(*original);
    copy.AddInt64("when", system_time());
    copy.AddPointer("source", source);
    copy.AddInt32(valueName, value);
    return BInvoker::Invoke(&copy);
}
