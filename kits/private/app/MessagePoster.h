// How the kits post messages of their own (input, changes of a control) from threads that must
// never wait. Safe with targets that have gone, and from any thread.
#pragma once

#include "Message.h"
#include "Messenger.h"

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
