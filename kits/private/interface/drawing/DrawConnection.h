// A window's own connection to the X server: what its views draw goes out here, in the order it was
// drawn. All calls with the window's lock. Where a drawable has gone meanwhile, requests do nothing
// and nothing is said about it; once the display itself has gone, Flush() and Sync() end the
// program.
#pragma once

#include "drawing/FontFace.h"
#include "drawing/PixelFormat.h"
#include "Font.h"

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <array>
#include <list>
#include <map>
#include <memory>
#include <unordered_map>

// A typeface's glyphs as one connection's views draw them: each is sent to the server once, when it
// is first needed.
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

class DrawConnection {
public:
    // To the display that DISPLAY names; null without one. Waits for a few answers.
    static std::unique_ptr<DrawConnection> Open();
    ~DrawConnection();
    DrawConnection(const DrawConnection&) = delete;
    DrawConnection& operator=(const DrawConnection&) = delete;

    xcb_connection_t* Xcb() const { return fXcb; }
    // Returns when the X window is on the screen, where the window manager may yet have to put it:
    // what is drawn before that is lost. Waits for limit microseconds at most.
    void WaitUntilViewable(xcb_window_t window, bigtime_t limit) const;
    // The format of an X window that is there already; null if it has gone or has
    // less than eight bits a pixel. Waits.
    const PixelFormat* FormatOf(xcb_window_t window);
    // What RENDER calls that format; 0 where it cannot draw text in it.
    xcb_render_pictformat_t PictureFormat(const PixelFormat& format) const;
    // The font's glyphs in this size on the server; null where it cannot have any.
    GlyphSet* GlyphsOf(const BFont& font, float scale);

    // Sends what is buffered; does not wait.
    void Flush();
    // Sends it and waits until the server has carried it out.
    void Sync();

private:
    explicit DrawConnection(xcb_connection_t* connection);
    void AskForRender();

    xcb_connection_t* fXcb;
    std::list<PixelFormat> fFormats; // contexts keep pointers to them
    std::map<xcb_visualid_t, xcb_render_pictformat_t> fPictureFormats;
    xcb_render_pictformat_t fAlphaFormat = 0;
    std::map<const FontFace*, std::unique_ptr<GlyphSet>> fGlyphs;
};
