#include "toolkit/WindowPlacement.h"

#include <gtest/gtest.h>

namespace {

const BRect kScreen(0, 0, 1023, 767);

BPoint Place(BRect screen, BRect mainWindow, BRect window, int32 position, int32 nth = 0)
{
    return WindowPlacement { screen, mainWindow }.Place(window, position, nth);
}

} // namespace

TEST(WindowPlacement, EachRuleHasItsPlace)
{
    const BRect small(0, 0, 199, 99);
    const BRect left(50, 60, 349, 459); // a main window with room at its right
    const BRect right(700, 60, 999, 459); // one with room at its left only
    const BRect wide(100, 60, 899, 459); // none at either side for 200 pixels
    const struct {
        const char* name;
        BRect mainWindow;
        int32 position;
        int32 nth;
        BPoint corner;
    } rows[] = {
        { "the first of a cascade", BRect(), kCascade, 0, BPoint(46, 68) },
        { "the third of a cascade", BRect(), kCascade, 2, BPoint(94, 116) },
        { "an unknown rule cascades", BRect(), 17, 2, BPoint(94, 116) },
        { "centred between title and borders", left, kCentred, 0, BPoint(412, 345) },
        { "right of the main window, tops in line", left, kBesideMain, 0, BPoint(362, 60) },
        { "left of it where the right is too narrow", right, kBesideMain, 0, BPoint(488, 60) },
        { "in the corner where both are", wide, kBesideMain, 0, BPoint(818, 28) },
        { "in the corner without a main window", BRect(), kBesideMain, 0, BPoint(818, 28) },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const BPoint corner = Place(kScreen, row.mainWindow, small, row.position, row.nth);
        EXPECT_EQ(corner.x, row.corner.x);
        EXPECT_EQ(corner.y, row.corner.y);
    }
}

TEST(WindowPlacement, WindowsOfAnySizeStayOnTheScreen)
{
    const BRect screens[] = { kScreen, BRect(1920, 200, 1920 + 639, 200 + 479) };
    for (const BRect& screen : screens) {
        for (float size = 50; size < 400; size += 50) {
            for (int32 nth = 0; nth < 40; nth++) {
                const BRect window(0, 0, size, size);
                const BRect mainWindow(screen.right - 300, screen.bottom - 50, screen.right, 9999);
                const int32 rule = nth % 5;
                const BPoint corner = Place(screen, mainWindow, window, rule, nth);
                EXPECT_TRUE(screen.Contains(window.OffsetToCopy(corner.x, corner.y)))
                    << "rule " << rule << ", size " << size << ", number " << nth;
            }
        }
    }
}

TEST(WindowPlacement, AWindowLargerThanTheScreenShowsItsTitle)
{
    for (const int32 position : { kCascade, kCentred, kBesideMain }) {
        const BPoint corner = Place(kScreen, BRect(), BRect(0, 0, 2000, 1500), position);
        EXPECT_EQ(corner, BPoint(6, 28)) << position;
    }
}
