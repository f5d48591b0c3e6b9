// A typeface's glyphs as one connection's views draw them: each is sent to the server once, when it
// is first needed.
#pragma once

#include "drawing/FontFace.h"

#include <array>
#include <unordered_map>
#include <xcb/render.h>

class GlyphSet {
public:
    GlyphSet(xcb_connection_t* connection, xcb_render_pictformat_t alpha, FontFace& face);
    GlyphSet(const GlyphSet&) = delete;
    GlyphSet& operator=(const GlyphSet&) = delete;

    // Draws length bytes of UTF-8 in source's colour, the pen at (x, y) in target's pixels. Returns
    // by how many pixels the pen moves; text that begins beyond the range of coordinates is only
    // measured.
    int32 Draw(xcb_render_picture_t source, xcb_render_picture_t target, int32 x, int32 y,
        const char* text, int32 length);

private:
    int16 AdvanceOf(uint32 character);
    int16 Upload(uint32 character);

    xcb_connection_t* fConnection;
    FontFace& fFace;
    xcb_render_glyphset_t fId;
    std::array<int16, 256> fAdvances; // kUnknown until sent
    std::unordered_map<uint32, int16> fWideAdvances; // of the other characters
};
