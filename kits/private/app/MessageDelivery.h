// What a message learns by being sent, and how the kits send.
#pragma once

#include "Handler.h"
#include "Message.h"
#include "Messenger.h"

#include <memory>

struct MessageDelivery {
    enum class Reply {
        kNotOwed,
        kOwed, // the sender waits; deleting the message answers B_NO_REPLY
        kSent,
    };

    int32 token = 0; // of the target handler; 0: the looper itself
    BMessenger replyTo;
    Reply reply = Reply::kNotOwed;
    bool isReply = false;
    bool mayBeReplaced = false; // by a later one of the same kind, see PostLatest()
    bool wasDropped = false;
};

struct SendOptions {
    enum class Room {
        kWait, // at most timeout
        kAlways, // although the port is full
        kLatest, // likewise, in place of an older one
    };

    BMessenger replyTo;
    Room room = Room::kWait;
    bigtime_t timeout = 0;
    bool isReply = false;
    bool wantsReply = false; // the sender waits at replyTo
};

class MessagePort;

// The kits' own way into messages and messengers.
class MessageAccess {
public:
    static MessageDelivery& Delivery(BMessage& message) { return message.Delivery(); }
    static MessageDelivery* DeliveryIfAny(BMessage& message) { return message.fDelivery.get(); }
    static BMessenger Messenger(port_id port, int32 token);
    // The target's port, NULL if it is gone or not in this process.
    static std::shared_ptr<MessagePort> Port(const BMessenger& target);
    static int32 Token(const BHandler& handler) { return handler.fToken; }
    // Where replies to handler go: the application for NULL. B_BAD_HANDLER: it is in no looper.
    static status_t ReplyAddress(const BHandler* handler, BMessenger& address);

    // Puts a copy of message into the target's port; errors as BMessenger::SendMessage().
    static status_t Send(
        const BMessenger& target, const BMessage& message, const SendOptions& options);
    // Wakes a sender that waits for message's reply: its call returns status.
    static void Fail(BMessage& message, status_t status);
    // Answers B_NO_REPLY to a sender that waits.
    static void EndUnanswered(BMessage& message);
    // Makes to what from is, its delivery included; from becomes what to was.
    static void Swap(BMessage& to, BMessage& from);
};

// How the kits post messages of their own (input, changes of a control) from threads that must
// never wait. Safe with targets that have gone, and from any thread.
//
// Puts a copy into the target's port although that may be full. B_BAD_PORT_ID: the looper is gone;
// B_BAD_HANDLER: the handler is.
status_t PostAlways(const BMessenger& target, const BMessage& message);

// As PostAlways(), and takes back a message of the same what for the same handler that was posted
// by this function and still waits, unless another kind of message was posted to the looper with
// PostAlways() or by the program since: so movements fold into one, but a movement before a click
// stays before it.
status_t PostLatest(const BMessenger& target, const BMessage& message);

// Makes message one that the user dragged and let go; see BMessage::WasDropped().
void MarkDropped(BMessage& message);
