// A picture in memory, drawn with BView::DrawBitmap(). Rows lie one after the other, top row
// first, each BytesPerRow() long: the pixels, then padding to a multiple of four bytes.
#pragma once

#include "GraphicsDefs.h"
#include "Rect.h"

#include <memory>

class BMessage;

class BBitmap {
public:
    // bounds: (0, 0, 15, 15) is 16 pixels wide and high; fractions are rounded. Known spaces are
    // B_CMAP8, B_RGB32, B_RGBA32, B_RGB15, B_RGB16, B_GRAY8 and B_GRAY1. All bits start as 0 (in
    // B_CMAP8: black). With bounds that are invalid or beyond 32767 pixels either way, another
    // space, or too little memory the object is not IsValid().
    BBitmap(BRect bounds, color_space space);
    // From what Archive() made; not IsValid() where it is something else.
    explicit BBitmap(const BMessage* archive);
    BBitmap(const BBitmap&) = delete;
    BBitmap& operator=(const BBitmap&) = delete;

    bool IsValid() const { return fBits != nullptr; }
    BRect Bounds() const { return fBounds; } // left top at (0, 0)
    color_space ColorSpace() const { return fSpace; }
    void* Bits() const { return fBits.get(); } // null where not IsValid()
    int32 BitsLength() const { return fBytesPerRow * fRows; } // bytes; 0 where not IsValid()
    int32 BytesPerRow() const { return fBytesPerRow; }

    // Copies length bytes to the place offset bytes into Bits(). Data of another space is read as
    // the rows of a bitmap of that space and converted; offset then counts in its bytes and must
    // be the start of a pixel. What reaches beyond the end is cut off; nothing happens where the
    // object is not IsValid(), data is null or offset is negative.
    void SetBits(const void* data, int32 length, int32 offset, color_space space);

    // Adds the picture to archive. B_BAD_VALUE where the object is not IsValid() or archive null;
    // otherwise as BMessage's Add calls.
    status_t Archive(BMessage* archive) const;

    // The colour at a pixel inside Bounds(); alpha 0 where nothing is to be drawn (in B_CMAP8
    // B_TRANSPARENT_8_BIT, in B_RGB32 B_TRANSPARENT_32_BIT).
    rgb_color ColorAt(int32 x, int32 y) const;

private:
    void Allocate(BRect bounds);
    void Convert(const uint8* data, int64 length, int64 offset, color_space space);

    BRect fBounds { 0, 0, -1, -1 };
    color_space fSpace;
    int32 fBytesPerRow = 0;
    int32 fRows = 0;
    std::unique_ptr<uint8[]> fBits;
};
