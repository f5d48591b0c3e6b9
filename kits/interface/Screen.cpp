#include "Screen.h"

#include "drawing/FontFace.h"
#include "drawing/XcbReply.h"

#include <cmath>
#include <xcb/randr.h>
#include <xcb/xcb.h>

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

// Invalid where the server knows of no primary monitor or has switched it off.
BRect PrimaryMonitor(xcb_connection_t* connection, xcb_window_t root)
{
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_randr_id);
    if (extension == nullptr || !extension->present)
        return BRect();
    MakeReply(xcb_randr_query_version_reply(
        connection, xcb_randr_query_version(connection, 1, 3), nullptr));
    const auto primary = MakeReply(xcb_randr_get_output_primary_reply(
        connection, xcb_randr_get_output_primary(connection, root), nullptr));
    if (primary == nullptr || primary->output == 0)
        return BRect();
    const auto output = MakeReply(xcb_randr_get_output_info_reply(
        connection, xcb_randr_get_output_info(connection, primary->output, 0), nullptr));
    if (output == nullptr || output->crtc == 0)
        return BRect();
    const auto place = MakeReply(xcb_randr_get_crtc_info_reply(
        connection, xcb_randr_get_crtc_info(connection, output->crtc, 0), nullptr));
    if (place == nullptr)
        return BRect();
    return BRect(place->x, place->y, place->x + place->width - 1, place->y + place->height - 1);
}

} // namespace

BScreen::BScreen(screen_id id)
{
    int number = 0;
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

BRect BScreen::Frame() const
{
    if (!IsValid())
        return fPixels;
    const float scale = FontFace::DisplayScale();
    BRect frame = fPixels; // a monitor's corner is not scaled
    frame.right = frame.left + std::floor((fPixels.Width() + 1) / scale) - 1;
    frame.bottom = frame.top + std::floor((fPixels.Height() + 1) / scale) - 1;
    return frame;
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
