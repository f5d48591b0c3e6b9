// Colours, patterns and pixel formats.
#pragma once

#include "SupportDefs.h"

struct rgb_color {
    uint8 red;
    uint8 green;
    uint8 blue;
    uint8 alpha = 255;

    bool operator==(const rgb_color&) const = default;
};

constexpr rgb_color white_color { 255, 255, 255, 255 };
constexpr rgb_color black_color { 0, 0, 0, 255 };

// Eight rows of eight pixels, top row first, highest bit leftmost; 1 draws the high colour.
struct pattern {
    uint8 data[8];

    bool operator==(const pattern&) const = default;
};

constexpr pattern B_SOLID_HIGH { { 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff } };
constexpr pattern B_SOLID_LOW { { 0, 0, 0, 0, 0, 0, 0, 0 } };
constexpr pattern B_MIXED_COLORS { { 0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55 } };

enum color_space {
    B_NO_COLOR_SPACE = 0x0000,
    B_GRAY1 = 0x0001,
    B_GRAY8 = 0x0002,
    B_RGB24 = 0x0003,
    B_CMAP8 = 0x0004, // one byte a pixel, an index into the system's colour table
    B_RGB16 = 0x0005,
    B_RGB32 = 0x0008, // four bytes a pixel: blue, green, red, unused
    B_RGB15 = 0x0010,
    B_RGBA32 = 0x2008,
    B_RGBA15 = 0x2010,
};

// In a B_CMAP8 bitmap the index that drawing with B_OP_OVER leaves out.
constexpr uint8 B_TRANSPARENT_8_BIT = 0xff;
// In views and bitmaps of true colour the value that stands for "nothing is drawn here".
constexpr rgb_color B_TRANSPARENT_32_BIT { 0x77, 0x74, 0x77, 0x00 };
constexpr rgb_color B_TRANSPARENT_COLOR = B_TRANSPARENT_32_BIT;

enum drawing_mode {
    B_OP_COPY,
    B_OP_OVER,
};
