// The X window that a view draws into.
#pragma once

#include "SupportDefs.h"

struct NativeSurface {
    uint32 window = 0; // 0: the view is in no shown window
    int32 width = 0; // device pixels
    int32 height = 0;
    float scale = 1; // device pixels in a view unit
};
