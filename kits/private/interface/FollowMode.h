// Where a view goes when its parent is resized.
#pragma once

#include "InterfaceDefs.h"
#include "Rect.h"

// frame after its parent has become dx wider and dy higher, by the B_FOLLOW_ mode. Nothing is
// rounded, so that growing and shrinking by the same amounts gives the old frame; a frame that
// does not fit becomes invalid and comes back when the parent grows again.
[[nodiscard]] BRect FollowParent(BRect frame, uint32 mode, float dx, float dy);
