// Colours of text on the windows' background, which the desktop chooses.
#pragma once

#include <GraphicsDefs.h>

// The colour, or where the background is dark one as much brighter as it takes to read it there.
[[nodiscard]] rgb_color LibOnPanel(rgb_color color);
