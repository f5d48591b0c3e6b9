// The screen: its size, its depth and the system's table of 256 colours.
#pragma once

#include "GraphicsDefs.h"
#include "Rect.h"

class BWindow;

struct screen_id {
    int32 id;

    bool operator==(const screen_id&) const = default;
};

constexpr screen_id B_MAIN_SCREEN_ID { 0 };

// The system's colours and what is looked up in them.
struct color_map {
    int32 id;
    rgb_color color_list[256];
    uint8 inversion_map[256]; // the index nearest to each colour's complement
    uint8 index_map[32768]; // by red, green, blue with five bits each: the nearest index
};

// The table of the B_CMAP8 colours, the same for the life of the program; needs no display.
//   0 to 31     greys from black to white in equal steps
//   32 to 247   32 + 36 red + 6 green + blue, each 0 to 5 times 51
//   248 to 254  greys of the panels' edges: 24, 72, 128, 184, 216, 232, 248
//   255         B_TRANSPARENT_8_BIT, left out by B_OP_OVER
const color_map* system_colors();
// The index of the nearest of them; 255 only for B_TRANSPARENT_COLOR.
uint8 IndexOfColor(rgb_color color);

// What the display shows, without the timing of its signal.
struct display_mode {
    uint32 space; // a color_space
    uint16 virtual_width; // in the display's own pixels
    uint16 virtual_height;
    uint16 h_display_start; // of the monitor on the screen
    uint16 v_display_start;
};

// A snapshot of the screen that its constructor took.
class BScreen {
public:
    // Asks the X server that DISPLAY names, on a connection of its own. There is one screen: other
    // ids give an invalid object.
    explicit BScreen(screen_id id = B_MAIN_SCREEN_ID);
    bool IsValid() const { return fColorSpace != B_NO_COLOR_SPACE; } // false without a display

    screen_id ID() const { return B_MAIN_SCREEN_ID; }
    // In the coordinates of windows, which are pixels unless the desktop shows everything larger;
    // from (0, 0), or of several monitors the primary one's, where it lies on the screen. Invalid
    // where the object is.
    BRect Frame() const;
    // The same in pixels. B_ERROR, and nothing filled, where the object is invalid.
    status_t GetMode(display_mode* mode) const;
    color_space ColorSpace() const { return fColorSpace; } // B_NO_COLOR_SPACE where invalid

    // Colours of B_CMAP8 bitmaps; available without a display as well.
    const color_map* ColorMap() const { return system_colors(); }
    // B_TRANSPARENT_8_BIT gives B_TRANSPARENT_COLOR, and the other way round; inverted it stays.
    rgb_color ColorForIndex(uint8 index) const { return ColorMap()->color_list[index]; }
    uint8 IndexForColor(rgb_color color) const { return IndexOfColor(color); }
    uint8 IndexForColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255) const
    {
        return IndexOfColor({ red, green, blue, alpha });
    }
    uint8 InvertIndex(uint8 index) const { return ColorMap()->inversion_map[index]; }

private:
    BRect fPixels;
    color_space fColorSpace = B_NO_COLOR_SPACE;
};
