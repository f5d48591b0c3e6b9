#include "drawing/GlyphSet.h"

#include "TextCoding.h"

#include <cstring>

namespace {

constexpr int16 kUnknown = INT16_MIN;
constexpr int32 kMaxGlyphs = 252; // that one run may have
constexpr int32 kMaxPosition = 16383;

// One run of glyphs as the wire has it: a header, then 8- or 32-bit glyph numbers.
struct Run {
    uint8 count;
    uint8 unused[3];
    int16 x;
    int16 y;
    uint32 glyphs[kMaxGlyphs];
};
constexpr uint32 kHeaderBytes = 8;

// The characters are the glyphs' numbers. Where all fit into a byte, the run becomes shorter.
void Send(xcb_connection_t* connection, xcb_render_picture_t source, xcb_render_picture_t target,
    xcb_render_glyphset_t glyphs, Run& run, bool wide)
{
    if (wide) {
        xcb_render_composite_glyphs_32(connection, XCB_RENDER_PICT_OP_OVER, source, target, 0,
            glyphs, 0, 0, kHeaderBytes + 4 * run.count, &run.count);
        return;
    }
    auto* bytes = reinterpret_cast<uint8*>(run.glyphs);
    for (int i = 0; i < run.count; i++)
        bytes[i] = static_cast<uint8>(run.glyphs[i]);
    const uint32 padded = (run.count + 3u) & ~3u;
    xcb_render_composite_glyphs_8(connection, XCB_RENDER_PICT_OP_OVER, source, target, 0, glyphs, 0,
        0, kHeaderBytes + padded, &run.count);
}

} // namespace

GlyphSet::GlyphSet(xcb_connection_t* connection, xcb_render_pictformat_t alpha, FontFace& face)
    : fConnection(connection), fFace(face), fId(xcb_generate_id(connection))
{
    fAdvances.fill(kUnknown);
    xcb_render_create_glyph_set(connection, fId, alpha);
}

int32 GlyphSet::Draw(xcb_render_picture_t source, xcb_render_picture_t target, int32 x, int32 y,
    const char* text, int32 length)
{
    const char* end = text + length;
    int32 moved = 0;
    while (text < end) {
        Run run;
        int32 count = 0;
        uint32 highest = 0;
        const int32 start = x + moved;
        for (; count < kMaxGlyphs && text < end; count++) {
            const uint32 character = NextCharacter(text, end);
            moved += AdvanceOf(character);
            highest |= character;
            run.glyphs[count] = character;
        }
        run.count = static_cast<uint8>(count);
        run.x = static_cast<int16>(start);
        run.y = static_cast<int16>(y);
        if (start >= -kMaxPosition && start <= kMaxPosition)
            Send(fConnection, source, target, fId, run, highest >= fAdvances.size());
    }
    return moved;
}

int16 GlyphSet::AdvanceOf(uint32 character)
{
    if (character >= fAdvances.size()) {
        const auto found = fWideAdvances.find(character);
        return found == fWideAdvances.end() ? Upload(character) : found->second;
    }
    const int16 advance = fAdvances[character];
    return advance == kUnknown ? Upload(character) : advance;
}

int16 GlyphSet::Upload(uint32 character)
{
    const GlyphImage& glyph = fFace.GlyphOf(character);
    xcb_render_glyphinfo_t info {};
    info.width = glyph.width;
    info.height = glyph.height;
    info.x = static_cast<int16>(-glyph.left);
    info.y = static_cast<int16>(-glyph.top);
    info.x_off = glyph.advance;
    xcb_render_add_glyphs(
        fConnection, fId, 1, &character, &info, glyph.alpha.size(), glyph.alpha.data());
    if (character < fAdvances.size())
        fAdvances[character] = glyph.advance;
    else
        fWideAdvances[character] = glyph.advance;
    return glyph.advance;
}
