#include "server/DisplayServer.h"

#include "TestWindow.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>

TEST_F(WindowTest, TheApplicationsCursorIsShownUntilTheNormalOneIsBack)
{
    uint8 image[68] = { 16, 1, 3, 5 }; // hot spot: row 3, column 5
    for (int i = 4; i < 68; i++)
        image[i] = static_cast<uint8>(i * i * 37);
    be_app->SetCursor(image);
    // None of these, with one byte of the head wrong, is a cursor: that one stays.
    using Head = std::array<uint8, 68>;
    for (const Head& other :
        { Head { 15, 1 }, { 17, 1 }, { 16, 2 }, { 16, 1, 16 }, { 16, 1, 0, 16 } })
        be_app->SetCursor(other.data());
    be_app->SetCursor(nullptr);
    const auto cursor = display::Call([] { return *QGuiApplication::overrideCursor(); });
    EXPECT_EQ(cursor.hotSpot(), QPoint(5, 3));
    const QImage shown = cursor.bitmap().toImage(), mask = cursor.mask().toImage();
    for (int i = 0; i < 256; i++) {
        const int bit = 0x80 >> i % 8, y = i / 16, x = i % 16;
        const bool isIn = (image[36 + i / 8] & bit) != 0, isDark = (image[4 + i / 8] & bit) != 0;
        EXPECT_EQ(mask.pixelColor(x, y) == Qt::black, isIn) << i;
        EXPECT_EQ(shown.pixelColor(x, y) == Qt::black, isIn && isDark) << i;
    }
    be_app->SetCursor(B_HAND_CURSOR);
    EXPECT_EQ(display::Call([] { return QGuiApplication::overrideCursor(); }), nullptr);
}
