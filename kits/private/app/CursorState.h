// The pointer's picture as the program wants it, between BApplication::SetCursor() and the display
// server, which may start later or never.
#pragma once

#include "SupportDefs.h"

struct CursorState {
    bool isSet = false; // the program chose a picture: image holds it
    uint8 image[68] = {}; // in the format of B_HAND_CURSOR
};

CursorState CurrentCursor();

// Changed() is called after each change, in the thread that made it, and at once by this call; it
// reads CurrentCursor() and must not wait. NULL: none. There is one hook.
void SetCursorHook(void (*changed)());

// For BApplication. Copies the 68 bytes; other data changes nothing.
void SetCursorImage(const void* data);
