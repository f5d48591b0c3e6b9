// The address of a handler: may be kept, copied and sent about when the handler is long gone.
// Sending copies the message, so the caller keeps its own. Of use from any thread, without locks.
#pragma once

#include "OS.h"

class BHandler;
class BLooper;
class BMessage;

using port_id = int32; // of the queue that a looper takes its messages from

class BMessenger {
public:
    BMessenger() = default; // no target
    // The application of that signature: this one, or the file manager, whose messages are passed
    // on to the desktop's. With team -1 whichever runs it. *result: B_BAD_VALUE (NULL, or no such
    // application is known to run), B_MISMATCHED_VALUES (team is another application); the
    // messenger then has no target.
    explicit BMessenger(const char* signature, team_id team = -1, status_t* result = nullptr);
    // A handler that belongs to a looper, or with NULL looper itself. *result:
    // B_BAD_VALUE (both NULL), B_BAD_HANDLER (in no looper), B_MISMATCHED_VALUES (in another
    // looper); the messenger then has no target.
    BMessenger(
        const BHandler* handler, const BLooper* looper = nullptr, status_t* result = nullptr);

    // Puts a copy into the target's port. Replies go to replyTo, which must belong to a looper
    // (else B_BAD_HANDLER), with NULL to the application. While the port is full it waits for at
    // most timeout microseconds: B_WOULD_BLOCK for 0, else B_TIMED_OUT. B_BAD_PORT_ID: the target's
    // looper is gone, or went while this waited; B_BAD_HANDLER: the target handler is.
    // A looper that sends to itself never waits: with an infinite timeout the message goes past
    // the bound, with any other it is B_WOULD_BLOCK.
    status_t SendMessage(BMessage* message, BHandler* replyTo = nullptr,
        bigtime_t timeout = B_INFINITE_TIMEOUT) const;
    status_t SendMessage(uint32 command, BHandler* replyTo = nullptr) const;
    status_t SendMessage(
        BMessage* message, BMessenger replyTo, bigtime_t timeout = B_INFINITE_TIMEOUT) const;
    // Also waits, at most replyTimeout microseconds, for the reply. A message that was deleted
    // unanswered gives B_OK and a reply with the code B_NO_REPLY. B_BAD_PORT_ID: the target died
    // meanwhile; B_BAD_HANDLER: its handler left the looper; B_MESSAGE_TO_SELF: from the target's
    // own thread. After a failure reply is as it was.
    status_t SendMessage(BMessage* message, BMessage* reply,
        bigtime_t sendTimeout = B_INFINITE_TIMEOUT,
        bigtime_t replyTimeout = B_INFINITE_TIMEOUT) const;
    status_t SendMessage(uint32 command, BMessage* reply) const;

    bool IsValid() const; // the target's looper lives; the handler may have gone
    bool IsTargetLocal() const; // in this process
    // The target, where it still exists, else NULL; *looper is set in every case. Made of a
    // looper alone it answers NULL.
    BHandler* Target(BLooper** looper) const;
    // Locks the target's looper: true if that worked and the target is still in it.
    bool LockTarget() const;
    // B_OK, B_TIMED_OUT, B_WOULD_BLOCK, B_BAD_PORT_ID or B_BAD_HANDLER.
    status_t LockTargetWithTimeout(bigtime_t timeout) const;
    team_id Team() const { return fTeam; } // -1 without a target

    bool operator==(const BMessenger& other) const = default; // same target

private:
    friend class MessageAccess;

    team_id fTeam = -1;
    port_id fPort = -1;
    int32 fToken = 0; // of the handler; 0: the looper itself
};
