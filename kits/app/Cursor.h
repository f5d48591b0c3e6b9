// A picture for the pointer. The 68 bytes: size (16), depth (1), hot spot row, hot spot column, 16
// rows of 16 bits of image (1: black), 16 rows of 16 bits of mask (1: drawn); highest bit leftmost.
#pragma once

#include "SupportDefs.h"

class BCursor {
public:
    explicit BCursor(const void* data); // copied; other than the above leaves it without a picture

    const uint8* Data() const; // the 68 bytes; NULL without a picture

private:
    uint8 fData[68] = {};
};

extern const BCursor* const B_CURSOR_SYSTEM_DEFAULT; // B_HAND_CURSOR
extern const BCursor* const B_CURSOR_I_BEAM;
