// The frames of the pointer during a run: a wheel with two dark quarters that turns by a fourth of
// a quarter from frame to frame, so that the last is followed smoothly by the first.
#pragma once

#include "ui/AnimateCursor.h"

constexpr int32 kNbrBusyCursors = 4;

extern const unsigned char kBusyCursors[kNbrBusyCursors][kCursorBytes];
