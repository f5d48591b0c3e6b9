// Numbers of bytes as people read them: "2.0 KB".
#pragma once

#include "foundation/LibString.h"

// Sets text to the number, with so many decimals, and its unit: "MB" from 1048577 bytes on, "KB"
// from 1025 on, else "bytes". Plain bytes get decimals too.
void LibBytesToString(const uint32& bytes, LibString& text, int decimals = 0);
// The bytes of a number, a blank and the unit "KB" or "MB", a fraction of a byte cut off; at most
// what a uint32 holds, and 0 for a negative number. Any other unit, or none, gives 0. What is no
// number gives 0 too, and a line on standard error.
[[nodiscard]] uint32 LibStringToBytes(const char* text);
