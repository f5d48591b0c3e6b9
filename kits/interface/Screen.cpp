#include "Screen.h"

#include "drawing/XcbReply.h"

#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <climits>

namespace {

color_space SpaceOfDepth(uint8 depth)
{
    switch (depth) {
        case 1: return B_GRAY1;
        case 8: return B_CMAP8;
        case 15: return B_RGB15;
        case 16: return B_RGB16;
        default: return B_RGB32;
    }
}

const xcb_screen_t* ScreenByNumber(xcb_connection_t* connection, int number)
{
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screen.rem > 1; number--)
        xcb_screen_next(&screen);
    return screen.data;
}

// Invalid where the server knows of no primary monitor.
BRect PrimaryMonitor(xcb_connection_t* connection, xcb_window_t root)
{
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_randr_id);
    if (!extension || !extension->present)
        return BRect();
    // 1.5 is the first that knows monitors. A server answers by the version it was told of, though
    // its own answer to that is of no use.
    xcb_discard_reply(connection, xcb_randr_query_version(connection, 1, 5).sequence);
    const auto monitors = MakeReply(xcb_randr_get_monitors_reply(
        connection, xcb_randr_get_monitors(connection, root, 1), nullptr));
    if (!monitors)
        return BRect();
    for (auto at = xcb_randr_get_monitors_monitors_iterator(monitors.get()); at.rem > 0;
         xcb_randr_monitor_info_next(&at)) {
        const xcb_randr_monitor_info_t& place = *at.data;
        if (place.primary)
            return BRect(place.x, place.y, place.x + place.width - 1, place.y + place.height - 1);
    }
    return BRect();
}

} // namespace

BScreen::BScreen(screen_id id)
{
    int number = 0;
    // A connection of its own: a program may ask before it has an application.
    xcb_connection_t* connection = xcb_connect(nullptr, &number);
    if (id == B_MAIN_SCREEN_ID && xcb_connection_has_error(connection) == 0) {
        const xcb_screen_t* screen = ScreenByNumber(connection, number);
        fColorSpace = SpaceOfDepth(screen->root_depth);
        fPixels = PrimaryMonitor(connection, screen->root);
        if (!fPixels.IsValid())
            fPixels = BRect(0, 0, screen->width_in_pixels - 1, screen->height_in_pixels - 1);
    }
    xcb_disconnect(connection);
}

status_t BScreen::GetMode(display_mode* mode) const
{
    if (!IsValid())
        return B_ERROR;
    mode->space = fColorSpace;
    mode->virtual_width = static_cast<uint16>(fPixels.IntegerWidth() + 1);
    mode->virtual_height = static_cast<uint16>(fPixels.IntegerHeight() + 1);
    mode->h_display_start = static_cast<uint16>(fPixels.left);
    mode->v_display_start = static_cast<uint16>(fPixels.top);
    return B_OK;
}

// --- The system's colours

namespace {

constexpr int kGreys = 32;
constexpr int kCubeSteps = 6;
constexpr int kCubeSize = kCubeSteps * kCubeSteps * kCubeSteps;
// Seven more greys fill the table up to its last entry, which is the transparent one.
constexpr uint8 kEdgeGreys[] = { 24, 72, 128, 184, 216, 232, 248 };

rgb_color Grey(int value)
{
    const auto level = static_cast<uint8>(value);
    return { level, level, level };
}

rgb_color CubeColor(int index)
{
    const auto level = [](int step) { return static_cast<uint8>(step % kCubeSteps * 51); };
    return { level(index / (kCubeSteps * kCubeSteps)), level(index / kCubeSteps), level(index) };
}

rgb_color TableColor(int index)
{
    if (index < kGreys)
        return Grey(index * 255 / (kGreys - 1));
    if (index < kGreys + kCubeSize)
        return CubeColor(index - kGreys);
    if (index < B_TRANSPARENT_8_BIT)
        return Grey(kEdgeGreys[index - kGreys - kCubeSize]);
    return B_TRANSPARENT_COLOR;
}

uint8 Nearest(const color_map& map, int red, int green, int blue)
{
    int best = 0;
    int smallest = INT_MAX;
    for (int i = 0; i < B_TRANSPARENT_8_BIT; i++) {
        const rgb_color& color = map.color_list[i];
        const int distance = (color.red - red) * (color.red - red)
            + (color.green - green) * (color.green - green)
            + (color.blue - blue) * (color.blue - blue);
        if (distance < smallest) {
            smallest = distance;
            best = i;
        }
    }
    return static_cast<uint8>(best);
}

// Some eight million distances are measured here: so it is done at the first use only.
color_map* MakeColors()
{
    auto* map = new color_map {};
    for (int i = 0; i <= B_TRANSPARENT_8_BIT; i++)
        map->color_list[i] = TableColor(i);
    for (int i = 0; i < B_TRANSPARENT_8_BIT; i++) {
        const rgb_color& color = map->color_list[i];
        map->inversion_map[i] = Nearest(*map, 255 - color.red, 255 - color.green, 255 - color.blue);
    }
    map->inversion_map[B_TRANSPARENT_8_BIT] = B_TRANSPARENT_8_BIT;
    const auto widen = [](int value) { return (value & 31) * 255 / 31; };
    for (int i = 0; i < 32768; i++)
        map->index_map[i] = Nearest(*map, widen(i >> 10), widen(i >> 5), widen(i));
    return map;
}

} // namespace

const color_map* system_colors()
{
    static const color_map* const sMap = MakeColors(); // outlives every static object
    return sMap;
}

uint8 IndexOfColor(rgb_color color)
{
    if (color == B_TRANSPARENT_COLOR)
        return B_TRANSPARENT_8_BIT;
    return Nearest(*system_colors(), color.red, color.green, color.blue);
}
