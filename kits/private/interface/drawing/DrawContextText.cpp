// A drawing context's text and updates.
#include "drawing/DrawContext.h"

#include "drawing/DrawConnection.h"
#include "drawing/DrawState.h"

#include <algorithm>

namespace {

uint16 Widened(uint8 value)
{
    return static_cast<uint16>(value * 0x101);
}

} // namespace

// A new source for each colour: measured, that is a tenth faster than recolouring one.
xcb_render_picture_t DrawContext::ColorSource(rgb_color color)
{
    const uint32 packed = color.red << 16 | color.green << 8 | color.blue;
    if (packed == fSourceColor)
        return fColorSource;
    fSourceColor = packed;
    if (fColorSource == 0)
        fColorSource = xcb_generate_id(fXcb);
    else
        xcb_render_free_picture(fXcb, fColorSource);
    const xcb_render_color_t solid { Widened(color.red), Widened(color.green), Widened(color.blue),
        0xffff };
    xcb_render_create_solid_fill(fXcb, fColorSource, solid);
    return fColorSource;
}

xcb_render_picture_t DrawContext::TargetPicture()
{
    auto& picture = fTarget == fWindow ? fWindowPicture : fBufferPicture;
    if (picture == 0) {
        picture = xcb_generate_id(fXcb);
        xcb_render_create_picture(fXcb, picture, fTarget, fPictureFormat, 0, nullptr);
    }
    return picture;
}

float DrawContext::DrawString(const DrawState& state, BPoint pen, const char* text, int32 length)
{
    if (!fGlyphsKnown) {
        fGlyphsKnown = true;
        fGlyphs = fPictureFormat == 0 ? nullptr : fConnection.GlyphsOf(state.font, fScale);
    }
    if (fGlyphs == nullptr)
        return 0;
    const PixelRect place = Area(BRect(pen, pen)); // letters stand on the pen's pixel row
    return fGlyphs->Draw(ColorSource(state.highColor), TargetPicture(), place.left, place.bottom,
               text, length)
        / fScale;
}

void DrawContext::MakeBuffer(int32 width, int32 height)
{
    if (fBuffer != 0 && width <= fBufferWidth && height <= fBufferHeight)
        return;
    FreeBuffer();
    fBufferWidth = std::max(width, 1);
    fBufferHeight = std::max(height, 1);
    fBuffer = xcb_generate_id(fXcb);
    xcb_create_pixmap(fXcb, fFormat.Depth(), fBuffer, fWindow, fBufferWidth, fBufferHeight);
}

void DrawContext::FreeBuffer()
{
    if (fBufferPicture != 0)
        xcb_render_free_picture(fXcb, fBufferPicture);
    if (fBuffer != 0)
        xcb_free_pixmap(fXcb, fBuffer);
    fBufferPicture = 0;
    fBuffer = 0;
}

void DrawContext::BeginUpdate(const DrawState& state, BRect rect)
{
    const PixelRect visible = Visible();
    MakeBuffer(visible.Width(), visible.Height());
    fUpdate = Area(rect) & visible;
    fTarget = fBuffer;
    if (fUpdate.IsEmpty())
        return;
    if (state.viewColor == B_TRANSPARENT_COLOR) {
        xcb_copy_area(fXcb, fWindow, fBuffer, fGc, fUpdate.left, fUpdate.top, fUpdate.left,
            fUpdate.top, fUpdate.Width(), fUpdate.Height());
        return;
    }
    SetForeground(state.viewColor);
    SetFillStyle(XCB_FILL_STYLE_SOLID);
    FillArea(fUpdate);
}

void DrawContext::EndUpdate()
{
    fTarget = fWindow;
    if (!fUpdate.IsEmpty()) {
        xcb_copy_area(fXcb, fBuffer, fWindow, fGc, fUpdate.left, fUpdate.top, fUpdate.left,
            fUpdate.top, fUpdate.Width(), fUpdate.Height());
    }
}

void DrawContext::Clear(const DrawState& state)
{
    if (state.viewColor == B_TRANSPARENT_COLOR)
        return;
    SetForeground(state.viewColor);
    SetFillStyle(XCB_FILL_STYLE_SOLID);
    FillArea(Visible());
}
