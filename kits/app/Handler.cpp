#include "Handler.h"

#include "AppDefs.h"
#include "AppRegistry.h"
#include "Autolock.h"
#include "Looper.h"
#include "Message.h"

BHandler::BHandler(const char* name) : fToken(AppRegistry::Instance().AddHandler(this))
{
    SetName(name);
}

BHandler::~BHandler()
{
    {
        BLooper* looper = fLooper;
        const BAutolock lock(looper);
        // It may have been taken out, or given to another looper, while this waited for the lock.
        if (lock.IsLocked() && fLooper == looper)
            looper->RemoveHandler(this);
    }
    AppRegistry::Instance().RemoveHandler(fToken);
}

void BHandler::MessageReceived(BMessage* message)
{
    if (fNextHandler)
        fNextHandler->MessageReceived(message);
    // The end of the chain: who waits for an answer is told that nobody has one.
    else if (message->IsSourceWaiting())
        message->SendReply(B_MESSAGE_NOT_UNDERSTOOD);
}

void BHandler::SetName(const char* name)
{
    fHasName = name != nullptr;
    fName = name ? name : "";
}

const char* BHandler::Name() const
{
    return fHasName ? fName.c_str() : nullptr;
}

void BHandler::SetNextHandler(BHandler* handler)
{
    if (!handler || (fLooper && handler->Looper() == fLooper))
        fNextHandler = handler;
}
