#include "drawing/PixelFormat.h"

#include "drawing/XcbReply.h"

#include <algorithm>
#include <bit>
#include <span>

namespace {

struct FoundVisual {
    const xcb_screen_t* screen = nullptr;
    const xcb_visualtype_t* type = nullptr;
    uint8 depth = 0;
};

FoundVisual FindVisual(const xcb_setup_t* setup, xcb_visualid_t id)
{
    for (auto screen = xcb_setup_roots_iterator(setup); screen.rem != 0; xcb_screen_next(&screen)) {
        auto depth = xcb_screen_allowed_depths_iterator(screen.data);
        for (; depth.rem != 0; xcb_depth_next(&depth)) {
            auto visual = xcb_depth_visuals_iterator(depth.data);
            for (; visual.rem != 0; xcb_visualtype_next(&visual)) {
                if (visual.data->visual_id == id)
                    return { screen.data, visual.data, depth.data->depth };
            }
        }
    }
    return {};
}

uint16 Widen(int level, int steps) // level of steps as 16 bits
{
    return static_cast<uint16>(level * 65535 / (steps - 1));
}

int Distance(rgb_color a, rgb_color b)
{
    const int red = a.red - b.red;
    const int green = a.green - b.green;
    const int blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

// So that the map has more than the black and white a bare display starts with. Where it is full
// already, the nearest colour of those that others have asked for serves.
void AllocateCube(xcb_connection_t* connection, xcb_colormap_t map)
{
    constexpr int kSteps = 6;
    std::vector<xcb_alloc_color_cookie_t> cookies;
    for (int i = 0; i < kSteps * kSteps * kSteps; i++) {
        cookies.push_back(xcb_alloc_color(connection, map, Widen(i / (kSteps * kSteps), kSteps),
            Widen(i / kSteps % kSteps, kSteps), Widen(i % kSteps, kSteps)));
    }
    for (const auto& cookie : cookies)
        MakeReply(xcb_alloc_color_reply(connection, cookie, nullptr));
}

} // namespace

PixelFormat::Channel::Channel(uint32 mask)
    : max(mask == 0 ? 0 : mask >> std::countr_zero(mask)),
      shift(mask == 0 ? 0 : std::countr_zero(mask))
{
}

PixelFormat::PixelFormat(xcb_connection_t* connection, xcb_visualid_t visual) : fVisual(visual)
{
    const xcb_setup_t* setup = xcb_get_setup(connection);
    const FoundVisual found = FindVisual(setup, visual);
    if (!found.type)
        return;
    fDepth = found.depth;
    fLowByteFirst = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    auto format = xcb_setup_pixmap_formats_iterator(setup);
    for (; format.rem != 0; xcb_format_next(&format)) {
        if (format.data->depth == fDepth) {
            fBitsPerPixel = format.data->bits_per_pixel;
            fRowPad = format.data->scanline_pad;
        }
    }
    if (found.type->_class < XCB_VISUAL_CLASS_TRUE_COLOR) {
        ReadPalette(connection, *found.screen);
        return;
    }
    fRed = Channel(found.type->red_mask);
    fGreen = Channel(found.type->green_mask);
    fBlue = Channel(found.type->blue_mask);
    fInvertMask = found.type->red_mask | found.type->green_mask | found.type->blue_mask;
    // Bits of no channel are alpha or nothing: set, the pixel is opaque.
    const uint32 all = fDepth >= 32 ? ~0u : (1u << fDepth) - 1;
    fAlwaysSet = all & ~fInvertMask;
}

void PixelFormat::ReadPalette(xcb_connection_t* connection, const xcb_screen_t& screen)
{
    AllocateCube(connection, screen.default_colormap);
    std::vector<uint32> indices(1 << std::min<int>(fDepth, 8));
    for (size_t i = 0; i < indices.size(); i++)
        indices[i] = i;
    const auto reply = MakeReply(xcb_query_colors_reply(connection,
        xcb_query_colors(connection, screen.default_colormap, indices.size(), indices.data()),
        nullptr));
    // Not empty even without an answer: an empty one means true colour.
    fPalette.assign(1, black_color);
    // Of a palette's pixels only black and white have an opposite that XOR finds.
    fInvertMask = screen.white_pixel ^ screen.black_pixel;
    if (!reply)
        return;
    fPalette.clear();
    const size_t count = xcb_query_colors_colors_length(reply.get());
    for (const xcb_rgb_t& color : std::span(xcb_query_colors_colors(reply.get()), count)) {
        fPalette.push_back({ static_cast<uint8>(color.red >> 8),
            static_cast<uint8>(color.green >> 8), static_cast<uint8>(color.blue >> 8) });
    }
}

uint32 PixelFormat::PaletteIndex(rgb_color color) const
{
    const auto nearest = std::min_element(fPalette.begin(), fPalette.end(),
        [color](rgb_color a, rgb_color b) { return Distance(a, color) < Distance(b, color); });
    return static_cast<uint32>(nearest - fPalette.begin());
}

int32 PixelFormat::BytesPerRow(int32 width) const
{
    return (width * fBitsPerPixel + fRowPad - 1) / fRowPad * fRowPad / 8;
}

void PixelFormat::Store(uint8* row, int32 x, uint32 pixel) const
{
    const int bytes = fBitsPerPixel / 8;
    for (int i = 0; i < bytes; i++) {
        const int shift = 8 * (fLowByteFirst ? i : bytes - 1 - i);
        row[x * bytes + i] = static_cast<uint8>(pixel >> shift);
    }
}

bool PixelFormat::Shows(const uint8* row, int32 x, uint32 pixel) const
{
    const int bytes = fBitsPerPixel / 8;
    uint32 stored = 0;
    for (int i = 0; i < bytes; i++) {
        const int shift = 8 * (fLowByteFirst ? i : bytes - 1 - i);
        stored |= uint32 { row[x * bytes + i] } << shift;
    }
    return ((stored ^ pixel) & (fPalette.empty() ? fInvertMask : ~0u)) == 0;
}
