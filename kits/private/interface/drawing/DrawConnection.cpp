#include "drawing/DrawConnection.h"

#include "drawing/FontFace.h"
#include "drawing/XcbReply.h"
#include "OS.h"
#include "server/DisplayServer.h"
#include "TextCoding.h"
#include "Window.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

std::unique_ptr<DrawConnection> DrawConnection::Open()
{
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<DrawConnection>(new DrawConnection(connection));
}

DrawConnection::DrawConnection(xcb_connection_t* connection) : fXcb(connection)
{
    AskForRender();
}

DrawConnection::~DrawConnection()
{
    xcb_disconnect(fXcb); // the server frees what was made on it
}

void DrawConnection::AskForRender()
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(fXcb, &xcb_render_id);
    if (!extension || !extension->present) {
        fprintf(stderr, "No text is drawn: the display lacks <RENDER>\n");
        return;
    }
    // Both are asked before either answer is read: one wait instead of two.
    const auto versionCookie = xcb_render_query_version(fXcb, 0, 11);
    const auto formatsCookie = xcb_render_query_pict_formats(fXcb);
    MakeReply(xcb_render_query_version_reply(fXcb, versionCookie, nullptr));
    const auto formats =
        MakeReply(xcb_render_query_pict_formats_reply(fXcb, formatsCookie, nullptr));
    if (!formats)
        return;
    auto info = xcb_render_query_pict_formats_formats_iterator(formats.get());
    for (; info.rem != 0; xcb_render_pictforminfo_next(&info)) {
        // Eight bits of alpha and nothing else: what glyphs' pictures are sent in.
        if (info.data->type == XCB_RENDER_PICT_TYPE_DIRECT && info.data->depth == 8
            && info.data->direct.alpha_mask == 0xff)
            fAlphaFormat = info.data->id;
    }
    auto screen = xcb_render_query_pict_formats_screens_iterator(formats.get());
    for (; screen.rem != 0; xcb_render_pictscreen_next(&screen)) {
        auto depth = xcb_render_pictscreen_depths_iterator(screen.data);
        for (; depth.rem != 0; xcb_render_pictdepth_next(&depth)) {
            const xcb_render_pictvisual_t* visuals = xcb_render_pictdepth_visuals(depth.data);
            for (int i = 0; i < xcb_render_pictdepth_visuals_length(depth.data); i++)
                fPictureFormats[visuals[i].visual] = visuals[i].format;
        }
    }
}

void DrawConnection::WaitUntilViewable(xcb_window_t window, bigtime_t limit) const
{
    // Asked again and again, not told: events on this connection are only thrown away.
    constexpr bigtime_t kPause = 2'000;
    const bigtime_t start = system_time();
    for (;;) {
        const auto attributes = MakeReply(xcb_get_window_attributes_reply(
            fXcb, xcb_get_window_attributes(fXcb, window), nullptr));
        if (!attributes || attributes->map_state == XCB_MAP_STATE_VIEWABLE
            || system_time() - start > limit)
            return;
        snooze(kPause);
    }
}

const PixelFormat* DrawConnection::FormatOf(xcb_window_t window)
{
    const auto attributes = MakeReply(
        xcb_get_window_attributes_reply(fXcb, xcb_get_window_attributes(fXcb, window), nullptr));
    if (!attributes)
        return nullptr;
    for (const PixelFormat& format : fFormats) {
        if (format.Visual() == attributes->visual)
            return &format;
    }
    PixelFormat format(fXcb, attributes->visual);
    return format.Depth() < 8 ? nullptr : &fFormats.emplace_back(std::move(format));
}

xcb_render_pictformat_t DrawConnection::PictureFormat(const PixelFormat& format) const
{
    const auto found = fPictureFormats.find(format.Visual());
    return found == fPictureFormats.end() ? 0 : found->second;
}

GlyphSet* DrawConnection::GlyphsOf(const BFont& font, float scale)
{
    FontFace* face = FontFace::Of(font, scale);
    if (!face || fAlphaFormat == 0)
        return nullptr;
    auto& glyphs = fGlyphs[face];
    if (!glyphs)
        glyphs = std::make_unique<GlyphSet>(fXcb, fAlphaFormat, *face);
    return glyphs.get();
}

void DrawConnection::Flush()
{
    if (xcb_flush(fXcb) <= 0) [[unlikely]]
        display::EndWithDisplay();
}

void DrawConnection::Sync()
{
    // Any request with an answer does: it is answered after all before it has been carried out.
    if (!MakeReply(xcb_get_input_focus_reply(fXcb, xcb_get_input_focus(fXcb), nullptr)))
        display::EndWithDisplay();
    // Errors of drawables that have gone queue up here, and the display's notes to all its clients.
    while (const auto event = MakeReply(xcb_poll_for_event(fXcb))) { }
}

void BWindow::FlushDrawing()
{
    if (fConnection)
        fConnection->Flush();
}

void BWindow::SyncDrawing()
{
    if (fConnection)
        fConnection->Sync();
}

// --- Glyphs

namespace {

constexpr int16 kUnknown = INT16_MIN;
// A count of 255 means something else, and 252 is the highest below it that needs no padding.
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
        // Positions have 16 bits: text from farther away would come in again on the other side.
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
