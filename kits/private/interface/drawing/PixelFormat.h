// How one kind of X window stores a colour in a pixel, and a pixel in an image.
#pragma once

#include "GraphicsDefs.h"

#include <xcb/xcb.h>

#include <vector>

class PixelFormat {
public:
    // visual must be one of the connection's. On a palette display asks for a cube of colours in
    // the default colour map and waits for the answer.
    PixelFormat(xcb_connection_t* connection, xcb_visualid_t visual);

    xcb_visualid_t Visual() const { return fVisual; }
    uint8 Depth() const { return fDepth; }
    // The nearest colour's pixel; alpha is ignored, where pixels have it they are opaque.
    uint32 PixelFor(rgb_color color) const
    {
        return fPalette.empty()
            ? fRed.Bits(color.red) | fGreen.Bits(color.green) | fBlue.Bits(color.blue) | fAlwaysSet
            : PaletteIndex(color);
    }
    // The bits that hold the colour: what an inverted pixel differs in.
    uint32 InvertMask() const { return fInvertMask; }

    // Bytes of so many pixels, of an image row of them with its padding, and storing a pixel there.
    int32 BytesOf(int32 pixels) const { return pixels * (fBitsPerPixel / 8); }
    int32 BytesPerRow(int32 width) const;
    void Store(uint8* row, int32 x, uint32 pixel) const;
    // Whether the pixel there shows the same colour; what else its bits may be is ignored.
    bool Shows(const uint8* row, int32 x, uint32 pixel) const;

private:
    struct Channel {
        uint32 max = 0;
        int shift = 0;

        explicit Channel(uint32 mask);
        uint32 Bits(uint8 value) const { return (value * max + 127) / 255 << shift; }
    };
    void ReadPalette(xcb_connection_t* connection, const xcb_screen_t& screen);
    uint32 PaletteIndex(rgb_color color) const;

    xcb_visualid_t fVisual;
    uint8 fDepth = 0;
    Channel fRed { 0 };
    Channel fGreen { 0 };
    Channel fBlue { 0 };
    uint32 fAlwaysSet = 0;
    uint32 fInvertMask = 0;
    std::vector<rgb_color> fPalette; // empty for true colour
    uint8 fBitsPerPixel = 0;
    uint8 fRowPad = 32;
    bool fLowByteFirst = true;
};
