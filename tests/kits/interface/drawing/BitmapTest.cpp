// Bitmaps in memory and on the screen, and the table of colours they share.
#include "Bitmap.h"

#include "Canvas.h"
#include "Message.h"
#include "Screen.h"
#include "server/DisplayServer.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

std::string Hex(const void* data, size_t size)
{
    std::string text;
    char digits[3];
    for (size_t i = 0; i < size; i++) {
        snprintf(digits, sizeof(digits), "%02x", static_cast<const uint8*>(data)[i]);
        text += digits;
    }
    return text;
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

TEST(Bitmap, SetBitsConvertsBetweenSpaces)
{
    // ff33cc, 10828c, transparent; black, white, and the last is missing.
    const uint8 data[] = { 0xcc, 0x33, 0xff, 9, 0x8c, 0x82, 0x10, 9, 119, 116, 119, 0, 0, 0, 0, 9,
        255, 255, 255, 9, 1, 2 };
    std::string found; // the bytes of both rows, and the colours that they mean
    for (const color_space space : { B_GRAY1, B_GRAY8, B_CMAP8, B_RGB15, B_RGB16, B_RGBA32 }) {
        BBitmap bitmap(BRect(0, 0, 2, 1), space);
        bitmap.SetBits(data, sizeof(data), 0, B_RGB32);
        found += Hex(bitmap.Bits(), bitmap.BitsLength()) + " means";
        for (int32 i = 0; i < 6; i++) {
            const rgb_color color = bitmap.ColorAt(i % 3, i / 3);
            found += " " + Hex(&color, sizeof(color));
        }
        found += "\n";
    }
    EXPECT_EQ(found, Expected("the same pixels as GRAY1, GRAY8, CMAP8, RGB15, RGB16 and RGBA32"));
}

TEST(Screen, IsAsLargeAndHasAsManyColorsAsTheDisplaySays)
{
    const BScreen screen;
    const QRect size = display::Call([] { return QGuiApplication::primaryScreen()->geometry(); });
    const int depth = display::Call([] { return QGuiApplication::primaryScreen()->depth(); });
    display_mode mode {};
    EXPECT_EQ(screen.GetMode(&mode), B_OK);
    EXPECT_EQ(std::tie(mode.virtual_width, mode.virtual_height),
        std::make_tuple(size.width(), size.height()));
    EXPECT_EQ(screen.Frame(), BRect(0, 0, size.width() - 1, size.height() - 1));
    EXPECT_EQ(mode.space, depth == 16 ? B_RGB16 : B_RGB32);
    EXPECT_TRUE(mode.h_display_start == 0 && mode.v_display_start == 0);
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

} // namespace
