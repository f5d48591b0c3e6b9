// Reading UTF-8 text character by character.
#pragma once

#include "SupportDefs.h"

constexpr uint32 kReplacementCharacter = 0xfffd;

// Reads the character at text, which is before end, and moves text behind it. A byte that starts no
// complete, shortest-form character below 0x110000 is passed over alone and read as the replacement
// character.
[[nodiscard]] uint32 NextCharacter(const char*& text, const char* end);
