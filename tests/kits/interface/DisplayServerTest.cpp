#include "server/DisplayServer.h"

#include "TestWindow.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>
#include <QPixmapCache>

#include <clocale>

TEST(DisplayServer, IsMissingWithoutADisplayAndAWindowEndsTheProgram)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const std::tuple<const char*, const char*, const char*> rows[] = {
        { nullptr, "", "No display: DISPLAY is not set" },
        { nullptr, "wayland-0",
            "No display: DISPLAY is not set: a Wayland session needs Xwayland" },
        { ":4711", "wayland-0", "Cannot open display <:4711>" },
    };
    for (const auto& [display, wayland, line] : rows) {
        EXPECT_EXIT(
            {
                if (display)
                    setenv("DISPLAY", display, 1);
                else
                    unsetenv("DISPLAY");
                setenv("WAYLAND_DISPLAY", wayland, 1);
                if (ui_color(B_PANEL_BACKGROUND_COLOR) == rgb_color { 216, 216, 216 })
                    new BWindow(BRect(0, 0, 9, 9), "None", B_TITLED_WINDOW, 0);
            },
            testing::ExitedWithCode(1), std::string("^[^\n]*") + line + "\n$");
    }
}

TEST_F(WindowTest, TheApplicationsCursorIsShownUntilTheNormalOneIsBack)
{
    uint8 image[68] = { 16, 1, 3, 5 }; // hot spot: row 3, column 5
    image[4] = 0xc0; // the two leftmost pixels of the first row
    image[36] = 0x80; // of which only the first is drawn
    image[7] = image[39] = 0x01; // the last of the second row
    be_app->SetCursor(image);
    image[0] = 32; // no cursor image: the other stays
    be_app->SetCursor(image);
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
