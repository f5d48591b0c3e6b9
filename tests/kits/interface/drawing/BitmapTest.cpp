// Bitmaps in memory and on the screen, and the table of colours they share.
#include "Bitmap.h"

#include "Canvas.h"
#include "Message.h"
#include "Screen.h"

namespace {

using BitmapDrawing = CanvasTest;

uint32 Number(rgb_color color)
{
    return color.red << 16 | color.green << 8 | color.blue;
}

TEST(Bitmap, RowsArePaddedToFourBytesAndOneThatCannotBeIsInvalid)
{
    const std::tuple<BRect, color_space, int32, int32> rows[] = {
        { { 3, 4, 7, 5 }, B_CMAP8, 8, 16 }, { { 0, 0, 4, 1 }, B_RGB32, 20, 40 },
        { { 0, 0, 2, 2 }, B_RGB16, 8, 24 }, { { 0, 0, 32, 0 }, B_GRAY1, 8, 8 },
        { BRect(), B_RGB32, 0, 0 }, { { 0, 0, 9, 9 }, B_NO_COLOR_SPACE, 0, 0 },
        { { 0, 0, 1e6f, 1 }, B_CMAP8, 0, 0 },
        { { 0, 0, 32766, 32766 }, B_RGB32, 0, 0 }, // more bytes than an int32 counts
    };
    for (const auto& [bounds, space, rowBytes, length] : rows) {
        const BBitmap bitmap(bounds, space);
        EXPECT_EQ(bitmap.IsValid(), length > 0);
        EXPECT_EQ(bitmap.BitsLength(), length);
        EXPECT_TRUE(length == 0 || bitmap.BytesPerRow() == rowBytes);
    }
}

TEST(Bitmap, SetBitsStaysInside)
{
    BBitmap bitmap(BRect(0, 0, 3, 1), B_CMAP8);
    uint8 data[16];
    memset(data, 7, sizeof(data));
    bitmap.SetBits(data, sizeof(data), 6, B_CMAP8); // two bytes fit
    bitmap.SetBits(data, 1, -1, B_CMAP8);
    bitmap.SetBits(data, 4, 8, B_CMAP8);
    bitmap.SetBits(nullptr, 4, 0, B_CMAP8);
    const auto* bits = static_cast<const uint8*>(bitmap.Bits());
    EXPECT_EQ(std::vector<uint8>(bits, bits + 8), (std::vector<uint8> { 0, 0, 0, 0, 0, 0, 7, 7 }));
}

TEST(Bitmap, SetBitsConvertsBetweenSpaces)
{
    const BScreen screen;
    const uint8 red = screen.IndexForColor(255, 0, 0);
    const uint8 indices[8] = { red, screen.IndexForColor(0, 51, 204), 255, 0, 0, 0, red, 0 };
    for (const color_space space : { B_RGB32, B_RGB16, B_RGB15 }) {
        BBitmap bitmap(BRect(0, 0, 2, 1), space); // rows of B_CMAP8 data have a byte of padding
        bitmap.SetBits(indices, sizeof(indices), 0, B_CMAP8);
        EXPECT_EQ(bitmap.ColorAt(0, 0), (rgb_color { 255, 0, 0 })) << space;
        EXPECT_NEAR(bitmap.ColorAt(1, 0).green, 51, 4) << space;
        EXPECT_NEAR(bitmap.ColorAt(1, 0).blue, 204, 4) << space;
        EXPECT_EQ(bitmap.ColorAt(2, 1), (rgb_color { 255, 0, 0 })) << space;
        EXPECT_TRUE(space != B_RGB32 || bitmap.ColorAt(2, 0).alpha == 0) << "transparent";
        BBitmap back(BRect(0, 0, 2, 1), B_CMAP8);
        back.SetBits(bitmap.Bits(), bitmap.BitsLength(), 0, space);
        EXPECT_EQ(static_cast<uint8*>(back.Bits())[0], red);
        BBitmap grey(BRect(0, 0, 2, 1), B_GRAY1);
        grey.SetBits(bitmap.Bits(), bitmap.BitsLength(), 0, space);
        EXPECT_EQ(static_cast<uint8*>(grey.Bits())[4], 0xe0) << "second row dark, space " << space;
    }
}

TEST(Bitmap, ArchivesComeBack)
{
    BBitmap bitmap(BRect(0, 0, 2, 1), B_RGB32);
    memcpy(bitmap.Bits(), "each byte is its own way", bitmap.BitsLength());
    BMessage archive;
    ASSERT_EQ(bitmap.Archive(&archive), B_OK);
    const BBitmap back(&archive);
    ASSERT_TRUE(back.IsValid());
    EXPECT_EQ(memcmp(back.Bits(), bitmap.Bits(), bitmap.BitsLength()), 0);
    archive.RemoveName("_frame");
    archive.AddRect("_frame", BRect(0, 0, 2, 2)); // no longer as long as its data
    EXPECT_FALSE(BBitmap(&archive).IsValid());
}

TEST(Screen, ColorsGoToTheirIndexAndBack)
{
    const BScreen screen;
    for (int i = 0; i < B_TRANSPARENT_8_BIT; i++) {
        const rgb_color color = screen.ColorForIndex(i);
        EXPECT_EQ(screen.ColorForIndex(screen.IndexForColor(color)), color) << i;
        const rgb_color inverted = screen.ColorForIndex(screen.InvertIndex(i));
        EXPECT_LE(std::abs(inverted.green + color.green - 255), 8) << i;
        const int packed = color.red >> 3 << 10 | color.green >> 3 << 5 | color.blue >> 3;
        const rgb_color nearest = screen.ColorForIndex(screen.ColorMap()->index_map[packed]);
        EXPECT_LE(std::abs(nearest.red - color.red), 8) << i;
    }
    EXPECT_EQ(screen.IndexForColor(B_TRANSPARENT_COLOR), B_TRANSPARENT_8_BIT);
    EXPECT_EQ(screen.InvertIndex(B_TRANSPARENT_8_BIT), B_TRANSPARENT_8_BIT);
}

// 3 x 2: red, transparent, blue; grey, red, transparent.
class SmallBitmap : public BBitmap {
public:
    SmallBitmap() : BBitmap(BRect(0, 0, 2, 1), B_CMAP8)
    {
        const BScreen screen;
        const uint8 red = screen.IndexForColor(255, 0, 0);
        const uint8 blue = screen.IndexForColor(0, 0, 255);
        const uint8 bits[] = { red, 255, blue, 0, 16, red, 255, 0 };
        SetBits(bits, sizeof(bits), 0, B_CMAP8);
    }
    uint32 Pixel(int x, int y) const { return Number(ColorAt(x, y)); }
    bool IsClear(int x, int y) const { return ColorAt(x, y).alpha == 0; }
};

TEST_F(BitmapDrawing, StretchesAndIsCutAtTheEdgesAndLeavesOutWhatIsTransparentOnlyWhenDrawnOver)
{
    const SmallBitmap bitmap;
    const BRect part(30, 20, 34, 21); // of its last column
    const std::tuple<drawing_mode, int, int, int> places[] = { { B_OP_COPY, 20, 5, 1 },
        { B_OP_OVER, 30, 5, 1 }, { B_OP_COPY, 2, 13, 2 }, { B_OP_OVER, 12, 13, 3 },
        { B_OP_OVER, -4, -4, 4 } };
    const Picture shown = Drawn([&](BView& v) {
        v.DrawBitmap(&bitmap, BRect(2, 0, 2, 1), part);
        for (const auto& [mode, left, top, step] : places) {
            v.SetDrawingMode(mode);
            v.DrawBitmap(&bitmap, BRect(left, top, left + 3 * step - 1, top + 2 * step - 1));
        }
    });
    ExpectPicture(shown, [&](int x, int y) {
        if (part.Contains(BPoint(x, y)))
            return bitmap.Pixel(2, y - 20);
        for (const auto& [mode, left, top, step] : places) {
            const int column = (x - left) / step, row = (y - top) / step;
            if (x < left || y < top || column > 2 || row > 1)
                continue;
            const bool isLeftOut = mode == B_OP_OVER && bitmap.IsClear(column, row);
            return isLeftOut ? kWhite : bitmap.Pixel(column, row);
        }
        return kWhite;
    });
}

} // namespace
