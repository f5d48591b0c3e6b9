#include "MessageDelivery.h"

#include "AppDefs.h"
#include "AppRegistry.h"
#include "Handler.h"
#include "MessageBody.h"
#include "MessagePort.h"

#include <new>
#include <unistd.h>

using Reply = MessageDelivery::Reply;

BMessenger MessageAccess::Messenger(port_id port, int32 token)
{
    BMessenger messenger;
    messenger.fTeam = getpid();
    messenger.fPort = port;
    messenger.fToken = token;
    return messenger;
}

std::shared_ptr<MessagePort> MessageAccess::Port(const BMessenger& target)
{
    return target.IsTargetLocal() ? AppRegistry::Instance().Port(target.fPort) : nullptr;
}

status_t MessageAccess::ReplyAddress(const BHandler* handler, BMessenger& address)
{
    if (!handler) {
        address = AppRegistry::Instance().Application();
        return B_OK;
    }
    status_t status = B_OK;
    address = BMessenger(handler, nullptr, &status);
    return status;
}

status_t MessageAccess::Send(
    const BMessenger& target, const BMessage& message, const SendOptions& options)
{
    const std::shared_ptr<MessagePort> port = Port(target);
    if (!port)
        return B_BAD_PORT_ID;
    // Told to the sender while it can be. A handler that goes later is found missing by the looper.
    if (target.fToken != 0 && !AppRegistry::Instance().HasHandler(target.fToken))
        return B_BAD_HANDLER;

    std::unique_ptr<BMessage> copy;
    try {
        copy = std::make_unique<BMessage>(message);
        MessageDelivery& delivery = copy->Delivery();
        delivery = { target.fToken, options.replyTo,
            options.wantsReply ? Reply::kOwed : Reply::kNotOwed, options.isReply,
            options.room == SendOptions::Room::kLatest, delivery.wasDropped };
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
    switch (options.room) {
        case SendOptions::Room::kAlways: return port->PushAlways(std::move(copy));
        case SendOptions::Room::kLatest: return port->PushLatest(std::move(copy));
        case SendOptions::Room::kWait: break;
    }
    if (port->Reader() != find_thread(nullptr))
        return port->Push(std::move(copy), options.timeout);
    // Nobody would make room while the reader itself waits for it.
    return options.timeout == B_INFINITE_TIMEOUT ? port->PushAlways(std::move(copy))
                                                 : port->Push(std::move(copy), 0);
}

void MessageAccess::Fail(BMessage& message, status_t status)
{
    MessageDelivery* delivery = DeliveryIfAny(message);
    if (!delivery || delivery->reply != Reply::kOwed)
        return;
    delivery->reply = Reply::kSent;
    // That port was made for this one reply: to close it tells the status where no message could.
    if (const auto port = Port(delivery->replyTo))
        port->Close(status);
}

void MessageAccess::EndUnanswered(BMessage& message)
{
    MessageDelivery* delivery = DeliveryIfAny(message);
    if (!delivery || delivery->reply != Reply::kOwed)
        return;
    delivery->reply = Reply::kSent;
    SendOptions options; // its port was made for this one, so there is room
    options.isReply = true;
    Send(delivery->replyTo, BMessage(B_NO_REPLY), options);
}

void MessageAccess::Swap(BMessage& to, BMessage& from)
{
    std::swap(to.what, from.what);
    to.fBody.swap(from.fBody);
    to.fDelivery.swap(from.fDelivery);
}

namespace {

status_t PostToKitTarget(const BMessenger& target, const BMessage& message, SendOptions::Room room)
{
    SendOptions options;
    options.replyTo = AppRegistry::Instance().Application();
    options.room = room;
    return MessageAccess::Send(target, message, options);
}

} // namespace

status_t PostAlways(const BMessenger& target, const BMessage& message)
{
    return PostToKitTarget(target, message, SendOptions::Room::kAlways);
}

status_t PostLatest(const BMessenger& target, const BMessage& message)
{
    return PostToKitTarget(target, message, SendOptions::Room::kLatest);
}

void MarkDropped(BMessage& message)
{
    MessageAccess::Delivery(message).wasDropped = true;
}
