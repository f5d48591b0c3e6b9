// One view's drawing: its X window, what the X server knows of its colours and pen, and the pixmap
// that an update is drawn into. Made when the view first draws; all calls with the window's lock.
//
// Coordinates are the view's. A point means the pixel it is nearest to (halves: the right or lower
// one); beyond 16383 pixels it is taken as being there. A rectangle whose corners are swapped
// is the one between them.
#pragma once

#include "drawing/PixelFormat.h"
#include "Font.h"
#include "GraphicsDefs.h"
#include "Rect.h"

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <memory>
#include <optional>
#include <vector>

class BBitmap;
class DrawConnection;
class GlyphSet;
class PictureRecord;
struct DrawState;

// Pixels of an X window; right and bottom are the first ones outside.
struct PixelRect {
    int32 left = 0;
    int32 top = 0;
    int32 right = 0;
    int32 bottom = 0;

    int32 Width() const { return right - left; }
    int32 Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    PixelRect operator&(const PixelRect& other) const;
};

class DrawContext {
public:
    // window: on the server already, in that format; scale: its pixels for a view unit.
    DrawContext(
        DrawConnection& connection, xcb_window_t window, const PixelFormat& format, float scale);
    ~DrawContext();
    DrawContext(const DrawContext&) = delete;
    DrawContext& operator=(const DrawContext&) = delete;

    // What of the view's coordinates the window shows; to be told before each call below.
    void SetBounds(BRect bounds) { fBounds = bounds; }

    // In the pen's width; both end points are drawn, and all four corners.
    void StrokeLine(const DrawState& state, BPoint from, BPoint to, pattern p);
    void StrokeRect(const DrawState& state, BRect rect, pattern p);
    void StrokeEllipse(const DrawState& state, BRect rect, pattern p);
    void StrokeTriangle(const DrawState& state, BPoint a, BPoint b, BPoint c, pattern p);
    // A rectangle with its edges; an ellipse that fits into it.
    void FillRect(const DrawState& state, BRect rect, pattern p);
    void FillEllipse(const DrawState& state, BRect rect, pattern p);
    void FillTriangle(const DrawState& state, BPoint a, BPoint b, BPoint c, pattern p);
    // Each colour becomes the one that it makes white with; a second time the old one.
    void InvertRect(BRect rect);

    // To be told when the state's font has become another one.
    void FontChanged() { fGlyphsKnown = false; }
    // Text in the high colour, blended with what is there. Returns how far the pen moves.
    float DrawString(const DrawState& state, BPoint pen, const char* text, int32 length);
    // source: in pixels of the bitmap. Stretches it to destination, pixel by pixel; transparent
    // pixels are left out in B_OP_OVER.
    void DrawBitmap(const DrawState& state, const BBitmap& bitmap, BRect source, BRect destination);

    // Between the two, drawing goes to a pixmap, its part rect in the view's colour at first (with
    // B_TRANSPARENT_COLOR as the window is); the end shows that part.
    void BeginUpdate(const DrawState& state, BRect rect);
    void EndUpdate();
    // Fills the window with the view's colour, unless that is transparent.
    void Clear(const DrawState& state);
    // See BView::ShowsOnly(). Waits for the server, which sends all of the window's pixels.
    std::optional<bool> ShowsOnly(rgb_color color) const;

private:
    static int16 Nearest(double position);
    int16 PenX(float x) const; // where a stroke's middle runs
    int16 PenY(float y) const;
    PixelRect Area(BRect rect) const; // the pixels of a filled rectangle
    PixelRect Visible() const { return Area(fBounds); }

    bool Prepare(const DrawState& state, pattern p); // false: nothing is to be drawn
    bool PrepareStroke(const DrawState& state, pattern p);
    bool StrokeBox(BRect rect, xcb_rectangle_t& box);
    void SetForeground(rgb_color color);
    void SetFillStyle(uint32 style);
    void SetPattern(const DrawState& state, pattern p);
    void SetStipple(pattern p);
    void FillArea(const PixelRect& area, xcb_gcontext_t gc);
    void FillWithViewColor(const DrawState& state, const PixelRect& area);
    xcb_render_picture_t ColorSource(rgb_color color);
    xcb_render_picture_t TargetPicture();
    void MakeBuffer(int32 width, int32 height);
    void FreeBuffer();
    void PutImage(const std::vector<uint8>& rows, const PixelRect& place);
    void PutOpaqueRuns(
        const std::vector<uint8>& rows, const std::vector<bool>& opaque, const PixelRect& place);

    DrawConnection& fConnection;
    xcb_connection_t* const fXcb;
    const PixelFormat& fFormat;
    const float fScale;
    const xcb_window_t fWindow;
    xcb_drawable_t fTarget; // the window, or the pixmap during an update
    BRect fBounds;

    // What the graphics context has been told last: changed only when something else is drawn.
    const xcb_gcontext_t fGc;
    uint32 fForeground; // red, green, blue in one number
    uint32 fBackground;
    uint32 fFillStyle = XCB_FILL_STYLE_SOLID;
    pattern fStipple = B_SOLID_HIGH;
    BPoint fStippleOrigin;
    int32 fLineWidth = 0; // 0: the server's thin lines, one pixel wide and fastest
    xcb_gcontext_t fInvertGc = 0;

    const xcb_render_pictformat_t fPictureFormat;
    xcb_render_picture_t fWindowPicture = 0;
    xcb_render_picture_t fColorSource = 0;
    uint32 fSourceColor;

    GlyphSet* fGlyphs = nullptr; // of the state's font, null where it cannot be drawn
    bool fGlyphsKnown = false;

    xcb_pixmap_t fBuffer = 0; // kept from one update to the next
    xcb_render_picture_t fBufferPicture = 0;
    int32 fBufferWidth = 0;
    int32 fBufferHeight = 0;
    PixelRect fUpdate;
};

// What a view draws with: kept whether it is in a window or not.
struct DrawState {
    rgb_color highColor = black_color;
    rgb_color lowColor = white_color;
    rgb_color viewColor = white_color;
    drawing_mode mode = B_OP_COPY;
    float penSize = 1;
    BFont font;
    std::unique_ptr<DrawContext> context; // made when the view first draws in a shown window
    PictureRecord* record = nullptr; // between BeginPicture() and EndPicture()
    BRect updateRect; // valid between BeginUpdate() and EndUpdate()
};
