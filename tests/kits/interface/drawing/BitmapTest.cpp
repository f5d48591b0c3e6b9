// Bitmaps in memory and on the screen, and the table of colours they share.
#include "Bitmap.h"

#include "Canvas.h"
#include "drawing/DrawConnection.h"
#include "drawing/DrawContext.h"
#include "drawing/XcbReply.h"
#include "Screen.h"

#include <QByteArray>

namespace {

std::string Hex(const void* data, size_t size)
{
    return QByteArray(static_cast<const char*>(data), size).toHex().toStdString();
}

TEST(Bitmap, RowsArePaddedToFourBytesAndOneThatCannotBeIsInvalid)
{
    for (const Row& row : RowsOf("kits/interface/drawing/bitmaps.txt", 7)) {
        float n[7];
        std::transform(row.begin(), row.end(), n, [](const auto& word) { return std::stof(word); });
        const BBitmap bitmap(BRect(n[0], n[1], n[2], n[3]), static_cast<color_space>(n[4]));
        EXPECT_TRUE(bitmap.IsValid() == (n[6] > 0) && bitmap.BitsLength() == n[6]
            && (n[6] == 0 || bitmap.BytesPerRow() == n[5]))
            << row[2] << " " << row[4];
    }
}

TEST(Bitmap, SetBitsConvertsBetweenSpaces)
{
    // ff33c5, 25828c, transparent; black, white, and of the last only a part.
    const uint8 data[] = { 0xc5, 0x33, 0xff, 9, 0x8c, 0x82, 0x25, 9, 119, 116, 119, 0, 0, 0, 0, 9,
        255, 255, 255, 9, 1, 2 };
    std::string found; // the bytes of both rows, and the colours that they mean
    for (const color_space space : { B_GRAY1, B_GRAY8, B_CMAP8, B_RGB15, B_RGB16, B_RGBA32 }) {
        BBitmap bitmap(BRect(0, 0, 2, 1), space);
        memset(bitmap.Bits(), 0x5a, bitmap.BitsLength());
        bitmap.SetBits(data, 8, 0, B_RGB32);
        bitmap.SetBits(data + 8, sizeof(data) - 8, 8, B_RGB32);
        BBitmap back(bitmap.Bounds(), B_RGBA32);
        back.SetBits(bitmap.Bits(), bitmap.BitsLength(), 0, space);
        found += Hex(bitmap.Bits(), bitmap.BitsLength()) + " means";
        for (int32 i = 0; i < 6; i++) {
            const rgb_color color = bitmap.ColorAt(i % 3, i / 3);
            found += " " + Hex(&color, sizeof(color));
            EXPECT_EQ(back.ColorAt(i % 3, i / 3), color) << space;
        }
        found += "\n";
    }
    EXPECT_EQ(found, Expected("the same pixels as GRAY1, GRAY8, CMAP8, RGB15, RGB16 and RGBA32"));
}

TEST(Bitmap, ComesOutOfAnArchiveUnlessThatIsNotWhole)
{
    BBitmap bitmap(BRect(0, 0, 2, 1), B_CMAP8);
    bitmap.SetBits("0123456789", 10, 3, B_CMAP8); // and no more than it has room for
    bitmap.SetBits("x", 1, 9, B_CMAP8);
    bitmap.SetBits("x", 1, -1, B_CMAP8);
    bitmap.SetBits("x", -1, 0, B_CMAP8);
    bitmap.SetBits("abc", 3, 0, B_RGB24); // which is not known
    EXPECT_EQ(Hex(bitmap.Bits(), 8), "0000003031323334");
    BMessage archive;
    EXPECT_EQ(bitmap.Archive(&archive), B_OK);
    EXPECT_EQ(bitmap.Archive(nullptr), B_BAD_VALUE);
    EXPECT_EQ(BBitmap(BRect(), B_CMAP8).Archive(&archive), B_BAD_VALUE);
    const BBitmap copy(&archive);
    EXPECT_EQ(Hex(copy.Bits(), copy.BitsLength()), Hex(bitmap.Bits(), 8));
    EXPECT_TRUE(copy.Bounds() == bitmap.Bounds() && copy.ColorSpace() == B_CMAP8);
    const char* kind = nullptr;
    int32 rowBytes = 0;
    EXPECT_TRUE(archive.FindString("class", &kind) == B_OK && kind == std::string("BBitmap"));
    EXPECT_TRUE(archive.FindInt32("_rowbytes", &rowBytes) == B_OK && rowBytes == 4);
    for (const char* name : { "_frame", "_cspace", "_data" }) {
        BMessage part(archive);
        part.RemoveName(name);
        EXPECT_FALSE(BBitmap(&part).IsValid()) << name;
    }
    archive.RemoveName("_data");
    archive.AddData("_data", B_RAW_TYPE, "1234567", 7);
    EXPECT_FALSE(BBitmap(&archive).IsValid());
}

TEST(Screen, ColorsHaveAnIndexEachOneOfTheOppositeAndOneOfThoseNearThem)
{
    const BScreen screen;
    std::string told;
    for (int i = 0; i < 256; i++) {
        const rgb_color color = screen.ColorForIndex(i);
        EXPECT_EQ(screen.ColorForIndex(screen.IndexForColor(color)), color);
        told += Hex(&color, 3) + " " + std::to_string(screen.InvertIndex(i))
            + (i % 8 < 7 ? ", " : "\n");
    }
    for (int i = 0; i < 64; i++) // every tenth of 32 reds, greens and blues
        told += std::to_string(
                    screen.ColorMap()->index_map[(i / 16 << 10 | i / 4 % 4 << 5 | i % 4) * 10])
            + (i % 16 < 15 ? " " : "\n");
    EXPECT_EQ(screen.IndexForColor(B_TRANSPARENT_COLOR), B_TRANSPARENT_8_BIT);
    EXPECT_EQ(told, Expected("the system's colours with the index of the opposite one"));
}

TEST(PixelFormat, ColorsBecomeWhatTheDisplayShowsAsThem)
{
    const auto connection = DrawConnection::Open();
    xcb_connection_t* x = connection->Xcb();
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const PixelFormat& format = *connection->FormatOf(screen.root);
    EXPECT_EQ(format.Depth(), screen.root_depth);
    EXPECT_EQ(PixelFormat(x, 0).Depth(), 0) << "there is no such visual";
    const rgb_color colors[] = { black_color, white_color, { 255, 0, 0 }, { 0, 255, 0 },
        { 0, 0, 255 }, { 51, 102, 204, 0 }, { 10, 90, 165 } };
    for (const rgb_color& color : colors) {
        const uint32 pixel = format.PixelFor(color);
        const auto reply = MakeReply(xcb_query_colors_reply(
            x, xcb_query_colors(x, screen.default_colormap, 1, &pixel), nullptr));
        const xcb_rgb_t& shown = *xcb_query_colors_colors(reply.get());
        const int most = format.Depth() == 8 ? 26 : format.Depth() == 16 ? 4 : 0; // half a step
        EXPECT_LE(std::abs((shown.red >> 8) - color.red), most);
        EXPECT_LE(std::abs((shown.green >> 8) - color.green), most);
        EXPECT_LE(std::abs((shown.blue >> 8) - color.blue), most);
        uint8 row[16] = {};
        format.Store(row, 1, pixel);
        EXPECT_EQ(Hex(row, 12),
            Hex(row + 12, format.BytesOf(1)) + Hex(&pixel, format.BytesOf(1))
                + std::string(2 * (12 - format.BytesOf(2)), '0'));
        EXPECT_TRUE(format.Shows(row, 1, pixel));
        EXPECT_FALSE(format.Shows(row, 1, pixel ^ 1));
    }
    EXPECT_EQ(format.PixelFor(black_color) ^ format.InvertMask(), format.PixelFor(white_color));
    EXPECT_EQ(format.BytesPerRow(5), (format.BytesOf(5) + 3) / 4 * 4);
    EXPECT_TRUE(!connection->FormatOf(0) && connection->PictureFormat(PixelFormat(x, 0)) == 0);
    const xcb_pixmap_t pixmap = xcb_generate_id(x);
    xcb_create_pixmap(x, format.Depth(), pixmap, screen.root, 40, 30);
    const DrawState state;
    DrawContext usual(*connection, pixmap, format, 1), large(*connection, pixmap, format, 2);
    EXPECT_FALSE(large.ShowsOnly(white_color).has_value()) << "nothing is in sight";
    large.SetBounds(BRect(1, 1, 20, 15));
    large.Clear(state);
    large.StrokeLine(state, BPoint(3, 4), BPoint(9, 4), B_SOLID_HIGH);
    large.FillRect(state, BRect(3, 6, 5, 8), B_SOLID_HIGH);
    EXPECT_FALSE(*large.ShowsOnly(white_color));
    usual.InvertRect(BRect(4, 6, 17, 7)); // where a unit is two pixels, just these are black
    usual.InvertRect(BRect(4, 10, 9, 15));
    EXPECT_TRUE(*large.ShowsOnly(white_color));
}

} // namespace
