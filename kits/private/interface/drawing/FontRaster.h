// Glyph pictures and measures from the toolkit's fonts. Only on the display server's thread.
#pragma once

#include "drawing/FontFace.h"

class QFont;

// Pixels of a view unit.
[[nodiscard]] float MainScreenScale();
// With letters as wide as FontFace measures them.
[[nodiscard]] QFont MakeFont(const FontRequest& request);
// In pixels.
[[nodiscard]] font_height MeasureFont(const FontRequest& request);
// One picture for each of the characters, in their order.
[[nodiscard]] std::vector<GlyphImage> RasterizeGlyphs(
    const FontRequest& request, const std::vector<uint32>& characters);
