// Arithmetic on 32-bit fields that come from outside is done in 64 bits and brought back here.
#pragma once

#include <algorithm>

#include <SupportDefs.h>

// The value, or the nearest end of the range of int32.
constexpr int32 LibToInt32(int64 value)
{
    return static_cast<int32>(std::clamp<int64>(value, INT32_MIN, INT32_MAX));
}
