#include "Bitmap.h"

#include "Message.h"
#include "Screen.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace {

constexpr float kMaxSide = 32767;

int BitsPerPixel(color_space space) // 0: not a known one
{
    switch (space) {
        case B_GRAY1: return 1;
        case B_GRAY8:
        case B_CMAP8: return 8;
        case B_RGB15:
        case B_RGB16: return 16;
        case B_RGB32:
        case B_RGBA32: return 32;
        default: return 0;
    }
}

int64 RowBytes(int64 width, color_space space)
{
    return (width * BitsPerPixel(space) + 31) / 32 * 4;
}

// Both round: the highest value becomes 255, and Narrow() gives back what Widen() was given.
uint8 Widen(int value, int bits) // to eight
{
    const int max = (1 << bits) - 1;
    return static_cast<uint8>(((value & max) * 255 + max / 2) / max);
}

int Narrow(uint8 value, int bits)
{
    return (value * ((1 << bits) - 1) + 127) / 255;
}

// bytes: where the pixel is; bit: which of its bits, counted from the highest, in B_GRAY1.
rgb_color ReadPixel(const uint8* bytes, int bit, color_space space)
{
    // Low byte first on every processor: the layout is the platform's and not the machine's.
    const auto word = [bytes](int shift) { return (bytes[0] | bytes[1] << 8) >> shift; };
    switch (space) {
        case B_GRAY1: return (bytes[0] & 0x80 >> bit) != 0 ? black_color : white_color;
        case B_GRAY8: return { bytes[0], bytes[0], bytes[0] };
        case B_CMAP8: return system_colors()->color_list[bytes[0]];
        case B_RGB15: return { Widen(word(10), 5), Widen(word(5), 5), Widen(word(0), 5) };
        case B_RGB16: return { Widen(word(11), 5), Widen(word(5), 6), Widen(word(0), 5) };
        default: break;
    }
    rgb_color color { bytes[2], bytes[1], bytes[0], bytes[3] };
    // B_RGB32's fourth byte means nothing, but in the one pixel that stands for transparent.
    if (space == B_RGB32 && color != B_TRANSPARENT_32_BIT)
        color.alpha = 255;
    return color;
}

void WriteWord(uint8* bytes, int word)
{
    bytes[0] = static_cast<uint8>(word);
    bytes[1] = static_cast<uint8>(word >> 8);
}

// 0.299, 0.587 and 0.114 in 256ths: the luminance of ITU-R BT.601.
uint8 Brightness(rgb_color color)
{
    return static_cast<uint8>((color.red * 77 + color.green * 150 + color.blue * 29) >> 8);
}

void WritePixel(uint8* bytes, int bit, color_space space, rgb_color color)
{
    const auto high = [color](int greenBits) {
        return Narrow(color.red, 5) << (5 + greenBits) | Narrow(color.green, greenBits) << 5
            | Narrow(color.blue, 5);
    };
    switch (space) {
        case B_GRAY1:
            bytes[0] &= ~(0x80 >> bit);
            bytes[0] |= Brightness(color) < 128 ? 0x80 >> bit : 0;
            break;
        case B_GRAY8: bytes[0] = Brightness(color); break;
        case B_CMAP8: bytes[0] = IndexOfColor(color); break;
        case B_RGB15: WriteWord(bytes, high(5)); break;
        case B_RGB16: WriteWord(bytes, high(6)); break;
        default:
            WriteWord(bytes, color.blue | color.green << 8);
            WriteWord(bytes + 2, color.red | color.alpha << 8);
            break;
    }
}

} // namespace

BBitmap::BBitmap(BRect bounds, color_space space) : fSpace(space)
{
    Allocate(bounds);
}

BBitmap::BBitmap(const BMessage* archive) : fSpace(B_NO_COLOR_SPACE)
{
    if (!archive)
        return;
    // What the archive lacks stays as it is here, and then there is no room for any bits.
    BRect bounds;
    int32 space = B_NO_COLOR_SPACE;
    const void* data = nullptr;
    ssize_t length = 0;
    archive->FindRect("_frame", &bounds);
    archive->FindInt32("_cspace", &space);
    archive->FindData("_data", B_RAW_TYPE, &data, &length);
    fSpace = static_cast<color_space>(space);
    Allocate(bounds);
    // Bits of another length belong to other bounds: none of it is to be believed.
    if (IsValid() && length == BitsLength())
        memcpy(fBits.get(), data, length);
    else
        fBits.reset();
}

status_t BBitmap::Archive(BMessage* archive) const
{
    if (!archive || !IsValid())
        return B_BAD_VALUE;
    status_t status = archive->AddString("class", "BBitmap");
    if (status == B_OK)
        status = archive->AddRect("_frame", fBounds);
    if (status == B_OK)
        status = archive->AddInt32("_cspace", fSpace);
    if (status == B_OK)
        status = archive->AddInt32("_rowbytes", fBytesPerRow);
    if (status == B_OK)
        status = archive->AddData("_data", B_RAW_TYPE, Bits(), BitsLength());
    return status;
}

void BBitmap::Allocate(BRect bounds)
{
    const bool inRange =
        bounds.IsValid() && bounds.Width() < kMaxSide && bounds.Height() < kMaxSide;
    if (!inRange || BitsPerPixel(fSpace) == 0)
        return;
    const int64 width = std::lround(bounds.Width()) + 1;
    const int64 rows = std::lround(bounds.Height()) + 1;
    const int64 bytes = RowBytes(width, fSpace) * rows;
    // BitsLength() and all offsets are 32 bits.
    if (bytes > INT32_MAX)
        return;
    fBits.reset(new (std::nothrow) uint8[bytes]());
    if (!fBits)
        return;
    fBounds = BRect(0, 0, width - 1, rows - 1);
    fBytesPerRow = static_cast<int32>(RowBytes(width, fSpace));
    fRows = static_cast<int32>(rows);
}

void BBitmap::SetBits(const void* data, int32 length, int32 offset, color_space space)
{
    if (!IsValid() || !data || length <= 0 || offset < 0)
        return;
    if (space != fSpace)
        Convert(static_cast<const uint8*>(data), length, offset, space);
    else if (offset < BitsLength())
        memcpy(fBits.get() + offset, data, std::min(length, BitsLength() - offset));
}

void BBitmap::Convert(const uint8* data, int64 length, int64 offset, color_space space)
{
    const int bits = BitsPerPixel(space);
    if (bits == 0)
        return;
    const int64 width = static_cast<int64>(fBounds.right) + 1;
    for (int64 y = 0; y < fRows; y++) {
        for (int64 x = 0; x < width; x++) {
            const int64 from = y * RowBytes(width, space) + x * bits / 8 - offset;
            // Pixels that data does not hold, or only in part, stay as they are.
            if (from < 0 || from + std::max(bits / 8, 1) > length)
                continue;
            uint8* to = fBits.get() + y * fBytesPerRow + x * BitsPerPixel(fSpace) / 8;
            WritePixel(to, x % 8, fSpace, ReadPixel(data + from, x % 8, space));
        }
    }
}

rgb_color BBitmap::ColorAt(int32 x, int32 y) const
{
    const uint8* row = fBits.get() + static_cast<size_t>(y) * fBytesPerRow;
    return ReadPixel(row + static_cast<int64>(x) * BitsPerPixel(fSpace) / 8, x % 8, fSpace);
}
