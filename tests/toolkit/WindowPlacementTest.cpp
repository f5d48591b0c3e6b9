#include "tests/support/Test.h"
#include "toolkit/LibWindow.h"

namespace {

const BRect kScreen(0, 0, 1023, 767);

} // namespace

TEST(WindowPlacement, EachRuleHasItsPlace)
{
    const BRect small(0, 0, 199, 99);
    const BRect left(50, 60, 349, 459); // a main window with room at its right
    const BRect right(700, 60, 999, 459); // one with room at its left only
    const BRect wide(100, 60, 899, 459); // none at either side for 200 pixels
    const BRect tooLarge(0, 0, 2000, 1500); // shows its title
    const std::tuple<const char*, BRect, BRect, int32, int32, BPoint> rows[] = {
        { "the first of a cascade", BRect(), small, kCascade, 0, BPoint(46, 68) },
        { "an unknown rule cascades", BRect(), small, 17, 2, BPoint(94, 116) },
        { "centred between title and borders", left, small, kCentred, 0, BPoint(412, 345) },
        { "right of the main window, tops in line", left, small, kBesideMain, 0, BPoint(362, 60) },
        { "left of it, the right is too narrow", right, small, kBesideMain, 0, BPoint(488, 60) },
        { "in the corner where both are", wide, small, kBesideMain, 0, BPoint(818, 28) },
        { "in the corner without one", BRect(), small, kBesideMain, 0, BPoint(818, 28) },
        { "large, in a cascade", BRect(), tooLarge, kCascade, 0, BPoint(6, 28) },
        { "large, centred", BRect(), tooLarge, kCentred, 0, BPoint(6, 28) },
        { "large, beside", BRect(), tooLarge, kBesideMain, 0, BPoint(6, 28) },
    };
    for (const auto& [name, mainWindow, window, position, nth, corner] : rows) {
        const WindowPlacement placement { kScreen, mainWindow };
        EXPECT_EQ(placement.Place(window, position, nth), corner) << name;
    }
}

TEST(WindowPlacement, BesideTheMainWindowOthersStayInSightOrAtLeastTheirTitles)
{
    const BRect mainWindow(46, 68, 346, 490), results(360, 68, 904, 538);
    const BRect small(0, 0, 99, 99), form(0, 0, 355, 199), wide(0, 0, 719, 439);
    const std::tuple<const char*, BRect, std::vector<BRect>, BPoint> rows[] = {
        { "nothing is there", form, { mainWindow }, BPoint(359, 68) },
        { "at the other's right", small, { mainWindow, results }, BPoint(917, 68) },
        { "below the other", BRect(0, 0, 355, 149), { mainWindow, results }, BPoint(360, 573) },
        { "below both titles", wide, { mainWindow, results }, BPoint(298, 112) },
        { "a title lower", BRect(0, 0, 655, 599), { mainWindow, BRect(359, 68, 1015, 700) },
            BPoint(362, 96) },
        { "no title can stay", BRect(0, 0, 999, 735), { mainWindow, results }, BPoint(18, 28) },
    };
    for (const auto& [name, window, others, corner] : rows) {
        const WindowPlacement placement { kScreen, mainWindow, others };
        EXPECT_EQ(placement.Place(window, kBesideMain, 0), corner) << name;
    }
    EXPECT_EQ((WindowPlacement { kScreen, BRect() }.Over(form, results)), BPoint(454, 203));
    EXPECT_EQ(
        (WindowPlacement { kScreen, BRect() }.Over(form, BRect(0, 0, 99, 99))), BPoint(6, 28));
}
