#include "drawing/DrawContext.h"

#include "Bitmap.h"
#include "drawing/DrawConnection.h"
#include "drawing/XcbReply.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace {

constexpr int kFarthest = 16383; // the difference of two such still fits the wire's 16 bits
constexpr uint32 kNoColor = 0xffffffff; // no colour's 24 bits
constexpr int16 kFullCircle = 360 * 64;

bool Equal(pattern a, pattern b) // in one comparison, unlike its ==
{
    return std::bit_cast<uint64>(a) == std::bit_cast<uint64>(b);
}

uint32 Packed(rgb_color color)
{
    return color.red << 16 | color.green << 8 | color.blue;
}

} // namespace

PixelRect PixelRect::operator&(const PixelRect& other) const
{
    return { std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
        std::min(bottom, other.bottom) };
}

DrawContext::DrawContext(
    DrawConnection& connection, xcb_window_t window, const PixelFormat& format, float scale)
    : fConnection(connection), fXcb(connection.Xcb()), fFormat(format), fScale(scale),
      fWindow(window), fTarget(window), fGc(xcb_generate_id(fXcb)), fForeground(kNoColor),
      fBackground(kNoColor), fPictureFormat(connection.PictureFormat(format)),
      fSourceColor(kNoColor)
{
    // Otherwise each copy is answered by an event, which nobody reads.
    const uint32 noExposures = 0;
    xcb_create_gc(fXcb, fGc, fWindow, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
}

DrawContext::~DrawContext()
{
    FreeBuffer();
    if (fWindowPicture != 0)
        xcb_render_free_picture(fXcb, fWindowPicture);
    if (fColorSource != 0)
        xcb_render_free_picture(fXcb, fColorSource);
    if (fInvertGc != 0)
        xcb_free_gc(fXcb, fInvertGc);
    xcb_free_gc(fXcb, fGc);
}

// Not lrint(), which takes halves to even numbers: what scrolls must not change its shape.
int16 DrawContext::Nearest(double position)
{
    if (!(position > -kFarthest)) // NaN is here as well
        return -kFarthest;
    if (position >= kFarthest)
        return kFarthest;
    return static_cast<int16>(static_cast<int>(position + kFarthest + 1.5) - (kFarthest + 1));
}

// A point is the middle of its pixel, in the view as on the display: hence the halves.
int16 DrawContext::PenX(float x) const
{
    return Nearest((static_cast<double>(x) - fBounds.left + 0.5) * fScale - 0.5);
}

int16 DrawContext::PenY(float y) const
{
    return Nearest((static_cast<double>(y) - fBounds.top + 0.5) * fScale - 0.5);
}

PixelRect DrawContext::Area(BRect rect) const
{
    const auto [left, right] = std::minmax(rect.left, rect.right);
    const auto [top, bottom] = std::minmax(rect.top, rect.bottom);
    // The right and bottom pixels belong to the rectangle, so their far edges count.
    const auto edge = [this](float position, float origin, int outside) {
        return Nearest((static_cast<double>(position) - origin + outside) * fScale);
    };
    return { edge(left, fBounds.left, 0), edge(top, fBounds.top, 0), edge(right, fBounds.left, 1),
        edge(bottom, fBounds.top, 1) };
}

void DrawContext::SetForeground(rgb_color color)
{
    // Compared before it becomes a pixel, for which a palette is searched.
    const uint32 packed = Packed(color);
    if (packed == fForeground)
        return;
    fForeground = packed;
    const uint32 pixel = fFormat.PixelFor(color);
    xcb_change_gc(fXcb, fGc, XCB_GC_FOREGROUND, &pixel);
}

void DrawContext::SetFillStyle(uint32 style)
{
    if (style == fFillStyle)
        return;
    fFillStyle = style;
    xcb_change_gc(fXcb, fGc, XCB_GC_FILL_STYLE, &style);
}

bool DrawContext::Prepare(const DrawState& state, pattern p)
{
    if (Equal(p, B_SOLID_HIGH)) [[likely]] {
        SetForeground(state.highColor);
        SetFillStyle(XCB_FILL_STYLE_SOLID);
        return true;
    }
    if (Equal(p, B_SOLID_LOW)) {
        SetForeground(state.lowColor);
        SetFillStyle(XCB_FILL_STYLE_SOLID);
        // B_OP_OVER leaves what is there wherever a pattern's bit is low.
        return state.mode != B_OP_OVER;
    }
    SetPattern(state, p);
    return true;
}

// Patterns stay where they are in the view when it scrolls.
void DrawContext::SetPattern(const DrawState& state, pattern p)
{
    SetForeground(state.highColor);
    if (Packed(state.lowColor) != fBackground) {
        fBackground = Packed(state.lowColor);
        const uint32 pixel = fFormat.PixelFor(state.lowColor);
        xcb_change_gc(fXcb, fGc, XCB_GC_BACKGROUND, &pixel);
    }
    if (!Equal(p, fStipple))
        SetStipple(p);
    if (fBounds.LeftTop() != fStippleOrigin) {
        fStippleOrigin = fBounds.LeftTop();
        const PixelRect origin = Area(BRect(B_ORIGIN, B_ORIGIN));
        const uint32 values[] = { static_cast<uint32>(origin.left),
            static_cast<uint32>(origin.top) };
        xcb_change_gc(
            fXcb, fGc, XCB_GC_TILE_STIPPLE_ORIGIN_X | XCB_GC_TILE_STIPPLE_ORIGIN_Y, values);
    }
    SetFillStyle(
        state.mode == B_OP_OVER ? XCB_FILL_STYLE_STIPPLED : XCB_FILL_STYLE_OPAQUE_STIPPLED);
}

void DrawContext::SetStipple(pattern p)
{
    // Drawn point by point: an image's order of bits would depend on the server.
    std::vector<xcb_point_t> points;
    for (int16 y = 0; y < 8; y++) {
        for (int16 x = 0; x < 8; x++) {
            if ((p.data[y] & 0x80 >> x) != 0)
                points.push_back({ x, y });
        }
    }
    const xcb_pixmap_t bits = xcb_generate_id(fXcb);
    const xcb_gcontext_t gc = xcb_generate_id(fXcb);
    xcb_create_pixmap(fXcb, 1, bits, fWindow, 8, 8);
    const uint32 zero = 0;
    xcb_create_gc(fXcb, gc, bits, XCB_GC_FOREGROUND, &zero);
    const xcb_rectangle_t all { 0, 0, 8, 8 };
    xcb_poly_fill_rectangle(fXcb, bits, gc, 1, &all);
    const uint32 one = 1;
    xcb_change_gc(fXcb, gc, XCB_GC_FOREGROUND, &one);
    xcb_poly_point(fXcb, XCB_COORD_MODE_ORIGIN, bits, gc, points.size(), points.data());
    xcb_change_gc(fXcb, fGc, XCB_GC_STIPPLE, &bits);
    xcb_free_gc(fXcb, gc);
    xcb_free_pixmap(fXcb, bits); // the view's GC keeps the bits
    fStipple = p;
}

bool DrawContext::PrepareStroke(const DrawState& state, pattern p)
{
    const float pen = state.penSize * fScale;
    // Pens are small, and lround() would cost a call for each line.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings)
    const int32 width = pen < 1.5f ? 0 : std::min(static_cast<int>(pen + 0.5f), kFarthest);
    if (width != fLineWidth) {
        fLineWidth = width;
        const uint32 values[] = { static_cast<uint32>(width),
            width == 0 ? XCB_CAP_STYLE_BUTT : XCB_CAP_STYLE_PROJECTING }; // both draw the ends
        xcb_change_gc(fXcb, fGc, XCB_GC_LINE_WIDTH | XCB_GC_CAP_STYLE, values);
    }
    return Prepare(state, p);
}

void DrawContext::StrokeLine(const DrawState& state, BPoint from, BPoint to, pattern p)
{
    if (!PrepareStroke(state, p))
        return;
    const xcb_segment_t line { PenX(from.x), PenY(from.y), PenX(to.x), PenY(to.y) };
    xcb_poly_segment(fXcb, fTarget, fGc, 1, &line);
}

// The rectangle's corners in order, for the shapes that the server wants by position and size. Of
// those without width or height it draws nothing: they are a line, drawn here, and false returned.
bool DrawContext::StrokeBox(BRect rect, xcb_rectangle_t& box)
{
    const auto [left, right] = std::minmax({ PenX(rect.left), PenX(rect.right) });
    const auto [top, bottom] = std::minmax({ PenY(rect.top), PenY(rect.bottom) });
    if (left == right || top == bottom) [[unlikely]] {
        const xcb_segment_t line { left, top, right, bottom };
        xcb_poly_segment(fXcb, fTarget, fGc, 1, &line);
        return false;
    }
    box = { left, top, static_cast<uint16>(right - left), static_cast<uint16>(bottom - top) };
    return true;
}

void DrawContext::StrokeRect(const DrawState& state, BRect rect, pattern p)
{
    xcb_rectangle_t box;
    if (PrepareStroke(state, p) && StrokeBox(rect, box))
        xcb_poly_rectangle(fXcb, fTarget, fGc, 1, &box);
}

void DrawContext::StrokeEllipse(const DrawState& state, BRect rect, pattern p)
{
    xcb_rectangle_t box;
    if (!PrepareStroke(state, p) || !StrokeBox(rect, box))
        return;
    const xcb_arc_t ellipse { box.x, box.y, box.width, box.height, 0, kFullCircle };
    xcb_poly_arc(fXcb, fTarget, fGc, 1, &ellipse);
}

void DrawContext::StrokeTriangle(const DrawState& state, BPoint a, BPoint b, BPoint c, pattern p)
{
    if (!PrepareStroke(state, p))
        return;
    // Back to the first point, so that the corner there is joined like the others.
    const xcb_point_t points[] = { { PenX(a.x), PenY(a.y) }, { PenX(b.x), PenY(b.y) },
        { PenX(c.x), PenY(c.y) }, { PenX(a.x), PenY(a.y) } };
    xcb_poly_line(fXcb, XCB_COORD_MODE_ORIGIN, fTarget, fGc, 4, points);
}

void DrawContext::FillArea(const PixelRect& area, xcb_gcontext_t gc)
{
    const xcb_rectangle_t rectangle { static_cast<int16>(area.left), static_cast<int16>(area.top),
        static_cast<uint16>(area.Width()), static_cast<uint16>(area.Height()) };
    xcb_poly_fill_rectangle(fXcb, fTarget, gc, 1, &rectangle);
}

void DrawContext::FillRect(const DrawState& state, BRect rect, pattern p)
{
    if (Prepare(state, p))
        FillArea(Area(rect), fGc);
}

void DrawContext::FillEllipse(const DrawState& state, BRect rect, pattern p)
{
    if (!Prepare(state, p))
        return;
    const PixelRect area = Area(rect);
    if (area.Width() <= 2 || area.Height() <= 2) { // the server's would have holes
        FillArea(area, fGc);
        return;
    }
    const xcb_arc_t ellipse { static_cast<int16>(area.left), static_cast<int16>(area.top),
        static_cast<uint16>(area.Width()), static_cast<uint16>(area.Height()), 0, kFullCircle };
    xcb_poly_fill_arc(fXcb, fTarget, fGc, 1, &ellipse);
}

void DrawContext::FillTriangle(const DrawState& state, BPoint a, BPoint b, BPoint c, pattern p)
{
    if (!Prepare(state, p))
        return;
    const xcb_point_t points[] = { { PenX(a.x), PenY(a.y) }, { PenX(b.x), PenY(b.y) },
        { PenX(c.x), PenY(c.y) } };
    xcb_fill_poly(fXcb, fTarget, fGc, XCB_POLY_SHAPE_CONVEX, XCB_COORD_MODE_ORIGIN, 3, points);
}

void DrawContext::InvertRect(BRect rect)
{
    // A context of its own: the other's function would have to be set and set back each time. XOR
    // with all bits of the colour gives the old pixels when it is done twice.
    if (fInvertGc == 0) {
        fInvertGc = xcb_generate_id(fXcb);
        const uint32 values[] = { XCB_GX_XOR, fFormat.InvertMask() };
        xcb_create_gc(fXcb, fInvertGc, fWindow, XCB_GC_FUNCTION | XCB_GC_FOREGROUND, values);
    }
    FillArea(Area(rect), fInvertGc);
}

// --- Text and updates

namespace {

uint16 Widened(uint8 value)
{
    return static_cast<uint16>(value * 0x101);
}

} // namespace

// A new source for each colour: measured, that is a tenth faster than recolouring one.
xcb_render_picture_t DrawContext::ColorSource(rgb_color color)
{
    const uint32 packed = Packed(color);
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
    if (!fGlyphs)
        return 0;
    const PixelRect place = Area(BRect(pen, pen)); // letters stand on the pen's pixel row
    return fGlyphs->Draw(ColorSource(state.highColor), TargetPicture(), place.left, place.bottom,
               text, length)
        / fScale;
}

void DrawContext::MakeBuffer(int32 width, int32 height)
{
    // It only grows: a window that is dragged to and fro makes no new one at each step.
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
    // What shows through is in the window already.
    if (state.viewColor == B_TRANSPARENT_COLOR) {
        xcb_copy_area(fXcb, fWindow, fBuffer, fGc, fUpdate.left, fUpdate.top, fUpdate.left,
            fUpdate.top, fUpdate.Width(), fUpdate.Height());
        return;
    }
    FillWithViewColor(state, fUpdate);
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
    if (state.viewColor != B_TRANSPARENT_COLOR)
        FillWithViewColor(state, Visible());
}

void DrawContext::FillWithViewColor(const DrawState& state, const PixelRect& area)
{
    SetForeground(state.viewColor);
    SetFillStyle(XCB_FILL_STYLE_SOLID);
    FillArea(area, fGc);
}

// --- Bitmaps

namespace {

// A bitmap, part of it stretched over an area of pixels.
class StretchedBitmap {
public:
    StretchedBitmap(const BBitmap& bitmap, BRect source, const PixelRect& area)
        : fBitmap(bitmap), fSource(source), fArea(area)
    {
    }
    rgb_color ColorAt(int32 x, int32 y) const
    {
        return fBitmap.ColorAt(Sample(x - fArea.left, fArea.Width(), fSource.left, fSource.right,
                                   fBitmap.Bounds().right),
            Sample(y - fArea.top, fArea.Height(), fSource.top, fSource.bottom,
                fBitmap.Bounds().bottom));
    }

private:
    // The column or row of the source under the middle of a pixel.
    static int32 Sample(int32 pixel, int32 pixels, float first, float last, float end)
    {
        const double position = first + (pixel + 0.5) / pixels * (last - first + 1);
        return static_cast<int32>(std::clamp<double>(position, 0, end));
    }

    const BBitmap& fBitmap;
    const BRect fSource;
    const PixelRect fArea;
};

} // namespace

void DrawContext::DrawBitmap(
    const DrawState& state, const BBitmap& bitmap, BRect source, BRect destination)
{
    const PixelRect area = Area(destination);
    const PixelRect visible = area & Visible();
    if (visible.IsEmpty() || !bitmap.IsValid())
        return;
    const StretchedBitmap picture(bitmap, source, area);
    const int32 width = visible.Width();
    const int32 rowBytes = fFormat.BytesPerRow(width);
    std::vector<uint8> rows(static_cast<size_t>(rowBytes) * visible.Height());
    std::vector<bool> opaque(static_cast<size_t>(width) * visible.Height(), true);
    bool allOpaque = true;
    for (int32 y = 0; y < visible.Height(); y++) {
        for (int32 x = 0; x < width; x++) {
            const rgb_color color = picture.ColorAt(visible.left + x, visible.top + y);
            fFormat.Store(&rows[y * rowBytes], x, fFormat.PixelFor(color));
            if (state.mode == B_OP_OVER && color.alpha == 0)
                allOpaque = opaque[y * width + x] = false;
        }
    }
    if (allOpaque)
        PutImage(rows, visible);
    else
        PutOpaqueRuns(rows, opaque, visible);
}

// In as many requests as the server's limit on their length makes necessary.
void DrawContext::PutImage(const std::vector<uint8>& rows, const PixelRect& place)
{
    constexpr uint32 kHeaderBytes = 32;
    const uint32 rowBytes = fFormat.BytesPerRow(place.Width());
    // The server counts in units of four bytes, the request's header among them.
    const uint32 limit = xcb_get_maximum_request_length(fXcb) * 4 - kHeaderBytes;
    const int32 atOnce = std::max<int32>(limit / rowBytes, 1);
    for (int32 y = place.top; y < place.bottom; y += atOnce) {
        const int32 height = std::min(atOnce, place.bottom - y);
        xcb_put_image(fXcb, XCB_IMAGE_FORMAT_Z_PIXMAP, fTarget, fGc, place.Width(), height,
            static_cast<int16>(place.left), static_cast<int16>(y), 0, fFormat.Depth(),
            rowBytes * height, &rows[(y - place.top) * rowBytes]);
    }
}

void DrawContext::PutOpaqueRuns(
    const std::vector<uint8>& rows, const std::vector<bool>& opaque, const PixelRect& place)
{
    const int32 width = place.Width();
    const int32 rowBytes = fFormat.BytesPerRow(width);
    for (int32 y = 0; y < place.Height(); y++) {
        const auto begin = opaque.begin() + y * width;
        const auto end = begin + width;
        for (auto first = std::find(begin, end, true); first != end;) {
            const auto last = std::find(first, end, false);
            const auto x = static_cast<int32>(first - begin);
            const auto length = static_cast<int32>(last - first);
            std::vector<uint8> run(fFormat.BytesPerRow(length));
            const auto from = rows.begin() + y * rowBytes + fFormat.BytesOf(x);
            std::copy_n(from, fFormat.BytesOf(length), run.begin());
            PutImage(
                run, { place.left + x, place.top + y, place.left + x + length, place.top + y + 1 });
            first = std::find(last, end, true);
        }
    }
}

std::optional<bool> DrawContext::ShowsOnly(rgb_color color) const
{
    const PixelRect area = Visible();
    if (area.IsEmpty())
        return {};
    const auto image = MakeReply(xcb_get_image_reply(fXcb,
        xcb_get_image(fXcb, XCB_IMAGE_FORMAT_Z_PIXMAP, fWindow, static_cast<int16>(area.left),
            static_cast<int16>(area.top), area.Width(), area.Height(), ~0u),
        nullptr));
    const int32 rowBytes = fFormat.BytesPerRow(area.Width());
    if (!image || image->depth != fFormat.Depth()
        || xcb_get_image_data_length(image.get()) < rowBytes * area.Height())
        return {};
    const uint8* pixels = xcb_get_image_data(image.get());
    const uint32 pixel = fFormat.PixelFor(color);
    for (int32 y = 0; y < area.Height(); y++) {
        for (int32 x = 0; x < area.Width(); x++) {
            if (!fFormat.Shows(pixels + y * rowBytes, x, pixel))
                return false;
        }
    }
    return true;
}
