#include "server/DisplayServer.h"

#include "TestWindow.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>

TEST_F(WindowTest, TheApplicationsCursorIsShownUntilTheNormalOneIsBack)
{
    uint8 image[68] = { 16, 1, 3, 5 }; // hot spot: row 3, column 5
    image[4] = 0xc0; // the two leftmost pixels of the first row
    image[36] = 0x80; // of which only the first is drawn
    image[7] = image[39] = 0x01; // the last of the second row
    be_app->SetCursor(image);
    // None of these, with one byte of the head another one, is a cursor: that one stays.
    const std::pair<int, uint8> wrong[] = { { 0, 15 }, { 0, 17 }, { 1, 2 }, { 2, 16 }, { 3, 16 } };
    for (const auto& [at, byte] : wrong) {
        uint8 other[68] = { 16, 1, 0, 0 };
        other[at] = byte;
        be_app->SetCursor(other);
    }
    be_app->SetCursor(nullptr);
    const auto cursor = display::Call([] { return *QGuiApplication::overrideCursor(); });
    EXPECT_EQ(cursor.hotSpot(), QPoint(5, 3));
    const QImage shown = cursor.bitmap().toImage();
    EXPECT_EQ(shown.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(shown.pixelColor(1, 0), QColor(Qt::white));
    EXPECT_EQ(shown.pixelColor(15, 1), QColor(Qt::black));
    EXPECT_EQ(cursor.mask().toImage().pixelColor(0, 0), QColor(Qt::black));
    be_app->SetCursor(B_HAND_CURSOR);
    EXPECT_EQ(display::Call([] { return QGuiApplication::overrideCursor(); }), nullptr);
}
