// Something that sends a message when it is set off: holds the message and whom it goes to.
// Controls derive from it.
#pragma once

#include "Message.h"
#include "Messenger.h"

#include <memory>

class BInvoker {
public:
    BInvoker();
    BInvoker(BMessage* message, BMessenger target); // takes the message over
    virtual ~BInvoker();
    BInvoker(const BInvoker&) = delete;
    BInvoker& operator=(const BInvoker&) = delete;

    // Takes the message over and deletes the former one; NULL for none.
    virtual status_t SetMessage(BMessage* message);
    BMessage* Message() const;

    // The target as BMessenger(handler, looper) makes it, with the same errors: the target is then
    // as it was. Handler and looper NULL: no target.
    virtual status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);
    virtual status_t SetTarget(BMessenger messenger);
    BMessenger Messenger() const;

    // Sends a copy of the given message, with NULL of its own one, and waits while the target's
    // port is full. B_BAD_VALUE without any; else as BMessenger::SendMessage().
    virtual status_t Invoke(BMessage* message = nullptr);

protected:
    // Invoke() as controls and menu items do it: the copy also says "when" (system_time()), the
    // "source", and the value in the field named.
    status_t InvokeFrom(
        const void* source, const char* valueName, int32 value, const BMessage* message);

private:
    std::unique_ptr<BMessage> fMessage;
    BMessenger fTarget;
};
