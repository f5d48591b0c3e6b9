// The graphics tests as anybody would write them down for the X server, without the program's kits:
// what their rates are held against. The same random shapes, in a window of the same size.
#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <cstdint>

class BareWindow {
public:
    enum class Shape {
        kLine,
        kString,
        kEllipse,
        kFilledEllipse,
        kRectangle,
        kFilledRectangle,
        kTriangle,
        kFilledTriangle
    };

    // Shows itself with its left top corner there, above all other windows.
    BareWindow(int16_t left, int16_t top);
    ~BareWindow();
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;

    bool IsThere() const { return screen != nullptr; } // false without a display
    int Width() const { return screen->width_in_pixels; } // of the screen
    xcb_connection_t* Connection() const { return connection; }

    // Draws count of them, each sent on its own if flushed, and clears the window. Returns the
    // seconds that the drawing took, without those of the calls of rand() for the coordinates.
    double Draw(Shape shape, bool flushed, long count);
    // Draws count of them in one colour, as many in a request as x11perf sends, and clears the
    // window. Returns the seconds until the server has drawn them; 0 for a shape that cannot be
    // sent so.
    double DrawBatch(Shape shape, long count);
    // Waits until the server has drawn all.
    void Sync();

private:
    void MakeGlyphs();
    void DrawOne(Shape shape);
    void DrawString(uint32_t pixel);
    void DrawTriangle(bool filled);
    template <typename Item, typename Request>
    void Send(const Item& item, Request request);
    template <typename Item, typename Request>
    double SendBatch(long count, Item (*next)(), Request request);

    xcb_connection_t* connection;
    const xcb_screen_t* screen = nullptr;
    xcb_window_t window = 0;
    xcb_gcontext_t gc = 0;
    xcb_render_glyphset_t glyphs = 0;
    xcb_render_picture_t picture = 0;
    xcb_render_picture_t source = 0;
};
