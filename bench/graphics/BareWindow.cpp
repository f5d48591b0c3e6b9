#include "BareWindow.h"

#include "drawing/FontFace.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr int kSize = 500;
constexpr double kRandRange = 2147483648.0;
constexpr float kScale = static_cast<float>(kSize / kRandRange);
constexpr char kText[] = "Tarvex";
constexpr int kLength = sizeof kText - 1;
constexpr int16_t kFullCircle = 360 * 64;

using Shape = BareWindow::Shape;

int16_t Coordinate()
{
    return static_cast<int16_t>(static_cast<float>(rand() & ~0x7f) * kScale + 0.5f);
}

xcb_point_t Point()
{
    return { Coordinate(), Coordinate() };
}

uint32_t Component()
{
    return static_cast<uint32_t>(rand() * (1 / kRandRange) * 255);
}

uint32_t Color()
{
    const uint32_t red = Component();
    const uint32_t green = Component();
    return red << 16 | green << 8 | Component();
}

xcb_segment_t Line()
{
    const xcb_point_t a = Point();
    const xcb_point_t b = Point();
    return { a.x, a.y, b.x, b.y };
}

xcb_rectangle_t Outline()
{
    const xcb_segment_t line = Line();
    return { std::min(line.x1, line.x2), std::min(line.y1, line.y2),
        static_cast<uint16_t>(std::abs(line.x1 - line.x2)),
        static_cast<uint16_t>(std::abs(line.y1 - line.y2)) };
}

// With its right and bottom edge.
xcb_rectangle_t Area()
{
    xcb_rectangle_t box = Outline();
    box.width++;
    box.height++;
    return box;
}

xcb_arc_t ArcIn(const xcb_rectangle_t& box)
{
    return { box.x, box.y, box.width, box.height, 0, kFullCircle };
}

xcb_arc_t Ellipse()
{
    return ArcIn(Outline());
}

xcb_arc_t Disc()
{
    return ArcIn(Area());
}

int RandsFor(Shape shape)
{
    switch (shape) {
        case Shape::kString: return 2;
        case Shape::kTriangle:
        case Shape::kFilledTriangle: return 6;
        default: return 4;
    }
}

double Seconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

double SecondsOfRands(long count)
{
    const double start = Seconds();
    for (long i = 0; i < count; i++)
        static_cast<void>(rand());
    return Seconds() - start;
}

// The formats that RENDER has for 8 bits of alpha and for a visual.
struct PictureFormats {
    xcb_render_pictformat_t alpha = 0;
    xcb_render_pictformat_t visual = 0;

    PictureFormats(xcb_connection_t* connection, xcb_visualid_t id)
    {
        auto* reply = xcb_render_query_pict_formats_reply(
            connection, xcb_render_query_pict_formats(connection), nullptr);
        auto format = xcb_render_query_pict_formats_formats_iterator(reply);
        for (; format.rem != 0; xcb_render_pictforminfo_next(&format))
            if (format.data->depth == 8 && format.data->direct.alpha_mask == 0xff)
                alpha = format.data->id;
        auto depth = xcb_render_pictscreen_depths_iterator(
            xcb_render_query_pict_formats_screens_iterator(reply).data);
        for (; depth.rem != 0; xcb_render_pictdepth_next(&depth)) {
            const auto* visuals = xcb_render_pictdepth_visuals(depth.data);
            for (int i = 0; i < xcb_render_pictdepth_visuals_length(depth.data); i++)
                visual = visuals[i].visual == id ? visuals[i].format : visual;
        }
        free(reply);
    }
};

} // namespace

BareWindow::BareWindow(int16_t left, int16_t top) : connection(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(connection))
        return;
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    window = xcb_generate_id(connection);
    const uint32_t values[] = { screen->white_pixel, 1 };
    xcb_create_window(connection, screen->root_depth, window, screen->root, left, top, kSize + 1,
        kSize + 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(connection, window);
    gc = xcb_generate_id(connection);
    const uint32_t noExposures = 0;
    xcb_create_gc(connection, gc, window, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    MakeGlyphs();
    Sync();
}

BareWindow::~BareWindow()
{
    xcb_disconnect(connection);
}

// The very pictures that the kits draw with.
void BareWindow::MakeGlyphs()
{
    const PictureFormats formats(connection, screen->root_visual);
    picture = xcb_generate_id(connection);
    xcb_render_create_picture(connection, picture, window, formats.visual, 0, nullptr);
    glyphs = xcb_generate_id(connection);
    xcb_render_create_glyph_set(connection, glyphs, formats.alpha);
    for (const char* letter = kText; *letter != '\0'; letter++) {
        const uint32_t id = static_cast<uint32_t>(*letter);
        const GlyphImage& image = FontFace::Of(*be_plain_font, 1)->GlyphOf(id);
        const xcb_render_glyphinfo_t info { image.width, image.height,
            static_cast<int16_t>(-image.left), static_cast<int16_t>(-image.top), image.advance, 0 };
        xcb_render_add_glyphs(
            connection, glyphs, 1, &id, &info, image.alpha.size(), image.alpha.data());
    }
}

void BareWindow::DrawString(uint32_t pixel)
{
    if (source != 0)
        xcb_render_free_picture(connection, source);
    else
        source = xcb_generate_id(connection);
    const auto wide = [](uint32_t value) { return static_cast<uint16_t>((value & 0xff) * 0x101); };
    const xcb_render_color_t color { wide(pixel >> 16), wide(pixel >> 8), wide(pixel), 0xffff };
    xcb_render_create_solid_fill(connection, source, color);
    struct {
        uint8_t count = kLength;
        uint8_t padding[3] = {};
        int16_t x = 0;
        int16_t y = 0;
        char text[8] = {};
    } run;
    run.x = Coordinate();
    run.y = static_cast<int16_t>(Coordinate() + 1);
    memcpy(run.text, kText, kLength);
    xcb_render_composite_glyphs_8(connection, XCB_RENDER_PICT_OP_OVER, source, picture, 0, glyphs,
        0, 0, sizeof run, &run.count);
}

void BareWindow::DrawOne(Shape shape)
{
    const uint32_t pixel = Color();
    if (shape == Shape::kString)
        return DrawString(pixel);
    xcb_change_gc(connection, gc, XCB_GC_FOREGROUND, &pixel);
    switch (shape) {
        case Shape::kEllipse: return Send(Ellipse(), xcb_poly_arc);
        case Shape::kFilledEllipse: return Send(Disc(), xcb_poly_fill_arc);
        case Shape::kRectangle: return Send(Outline(), xcb_poly_rectangle);
        case Shape::kFilledRectangle: return Send(Area(), xcb_poly_fill_rectangle);
        case Shape::kTriangle:
        case Shape::kFilledTriangle: return DrawTriangle(shape == Shape::kFilledTriangle);
        default: return Send(Line(), xcb_poly_segment);
    }
}

template <typename Item, typename Request>
void BareWindow::Send(const Item& item, Request request)
{
    request(connection, window, gc, 1, &item);
}

void BareWindow::DrawTriangle(bool filled)
{
    const xcb_point_t a = Point();
    const xcb_point_t points[] = { a, Point(), Point(), a };
    if (filled)
        xcb_fill_poly(
            connection, window, gc, XCB_POLY_SHAPE_CONVEX, XCB_COORD_MODE_ORIGIN, 3, points);
    else
        xcb_poly_line(connection, XCB_COORD_MODE_ORIGIN, window, gc, 4, points);
}

double BareWindow::Draw(Shape shape, bool flushed, long count)
{
    const double calibration = SecondsOfRands(count * RandsFor(shape));
    const double start = Seconds();
    for (long i = 0; i < count; i++) {
        DrawOne(shape);
        if (flushed)
            xcb_flush(connection);
    }
    const double seconds = Seconds() - start - calibration;
    xcb_clear_area(connection, 0, window, 0, 0, 0, 0);
    xcb_flush(connection);
    return seconds;
}

template <typename Item, typename Request>
double BareWindow::SendBatch(long count, Item (*next)(), Request request)
{
    constexpr size_t kMost = 500; // in a request
    std::vector<Item> items(static_cast<size_t>(count));
    std::generate(items.begin(), items.end(), next);
    Sync();
    const double start = Seconds();
    for (size_t i = 0; i < items.size(); i += kMost)
        request(connection, window, gc, static_cast<uint32_t>(std::min(kMost, items.size() - i)),
            &items[i]);
    Sync();
    const double seconds = Seconds() - start;
    xcb_clear_area(connection, 0, window, 0, 0, 0, 0);
    xcb_flush(connection);
    return seconds;
}

double BareWindow::DrawBatch(Shape shape, long count)
{
    switch (shape) {
        case Shape::kLine: return SendBatch(count, Line, xcb_poly_segment);
        case Shape::kTriangle: return SendBatch(count * 3, Line, xcb_poly_segment);
        case Shape::kEllipse: return SendBatch(count, Ellipse, xcb_poly_arc);
        case Shape::kFilledEllipse: return SendBatch(count, Disc, xcb_poly_fill_arc);
        case Shape::kRectangle: return SendBatch(count, Outline, xcb_poly_rectangle);
        case Shape::kFilledRectangle: return SendBatch(count, Area, xcb_poly_fill_rectangle);
        default: return 0;
    }
}

void BareWindow::Sync()
{
    free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}
