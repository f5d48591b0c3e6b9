// Receives messages, once it was added to a looper. What it does not handle itself goes to the
// next handler, by default its looper. Except where said otherwise its functions are called with
// the looper locked.
#pragma once

#include "OS.h"

#include <atomic>
#include <string>

class BLooper;
class BMessage;

class BHandler {
public:
    explicit BHandler(const char* name = nullptr);
    // Takes it out of its looper, locking that. Messages on their way to it are dropped.
    virtual ~BHandler();
    BHandler(const BHandler&) = delete;
    BHandler& operator=(const BHandler&) = delete;

    // Called in the looper's thread for each message. This version hands it to the next handler;
    // where there is none, a waiting sender gets B_MESSAGE_NOT_UNDERSTOOD.
    virtual void MessageReceived(BMessage* message);

    void SetName(const char* name); // copied
    const char* Name() const; // NULL if it never had one

    // The looper it was added to, else NULL. From any thread.
    BLooper* Looper() const { return fLooper; }
    // Handler must be in the same looper, or NULL; anything else changes nothing.
    void SetNextHandler(BHandler* handler);
    BHandler* NextHandler() const { return fNextHandler; }

private:
    friend class BLooper;
    friend class MessageAccess;

    std::string fName;
    bool fHasName = false;
    const int32 fToken; // its number in the registry of handlers, never given out again
    std::atomic<BLooper*> fLooper = nullptr; // changed with the looper locked, read by anyone
    BHandler* fNextHandler = nullptr;
};
