// Apart from the rest of the screen: for this alone the display server is asked.
#include "drawing/FontFace.h"
#include "Screen.h"

#include <cmath>

BRect BScreen::Frame() const
{
    if (!IsValid())
        return fPixels;
    const float scale = FontFace::DisplayScale();
    BRect frame = fPixels; // a monitor's corner is not scaled
    frame.right = frame.left + std::floor((fPixels.Width() + 1) / scale) - 1;
    frame.bottom = frame.top + std::floor((fPixels.Height() + 1) / scale) - 1;
    return frame;
}
