// Shapes on the screen against pictures worked out here.
#include "Canvas.h"

#include <numbers>

namespace {

constexpr uint32 kRed = 0xff0000;

using ShapesTest = CanvasTest;

// Black in the areas and on the edges of the frames, else white.
PixelRule Black(const std::vector<BRect>& areas, const std::vector<BRect>& frames = {})
{
    return [=](int x, int y) {
        const BPoint point(x, y);
        bool isBlack = false;
        for (const BRect& area : areas)
            isBlack |= area.Contains(point);
        for (const BRect& frame : frames)
            isBlack |= frame.Contains(point) && !frame.InsetByCopy(1, 1).Contains(point);
        return isBlack ? kBlack : kWhite;
    };
}

TEST_F(ShapesTest, RectanglesCoverTheirEdgesAndNothingBeyond)
{
    const Picture shown = Drawn([](BView& v) {
        v.FillRect(BRect(12, 8, 3, 2)); // corners swapped
        v.FillRect(BRect(15.4f, 2.5f, 18.5f, 5.6f)); // halves go right and down
        v.FillRect(BRect(21, 2, 21, 2));
        v.FillRect(BRect(-1e9f, 11, 1e9f, 12)); // out of the server's range
        v.StrokeRect(BRect(24, 2, 30, 8));
        v.StrokeRect(BRect(37, 8, 33, 2)); // corners swapped
        v.StrokeRect(BRect(22, 9, 22, 9));
        v.StrokeRect(BRect(-5, 15, 39, 35)); // over the edges
        v.ScrollTo(-2.5f, -1);
        v.FillRect(BRect(8, 20, 12.5f, 24));
    });
    ExpectPicture(shown,
        Black({ { 3, 2, 12, 8 }, { 15, 3, 19, 6 }, { 21, 2, 21, 2 }, { 0, 11, 39, 12 },
                  { 22, 9, 22, 9 }, { 11, 21, 15, 25 } },
            { { 24, 2, 30, 8 }, { 33, 2, 37, 8 }, { -5, 15, 39, 35 } }));
}

TEST_F(ShapesTest, LinesHaveBothEndPoints)
{
    const Picture shown = Drawn([](BView& v) {
        v.StrokeLine(BPoint(3, 4), BPoint(10, 4));
        v.StrokeLine(BPoint(1, 12), BPoint(1, 4)); // upwards
        v.StrokeLine(BPoint(13, 1), BPoint(13, 1));
        v.StrokeLine(BPoint(15, 3), BPoint(20, 3));
        v.StrokeLine(BPoint(20, 3), BPoint(20, 9));
        v.StrokeEllipse(BRect(3, 7, 9, 7)); // as flat as a line
        v.FillEllipse(BRect(11, 7, 11, 12));
        v.SetPenSize(3);
        v.StrokeLine(BPoint(10, 20), BPoint(20, 20));
    });
    ExpectPicture(shown,
        Black({ { 3, 4, 10, 4 }, { 1, 4, 1, 12 }, { 13, 1, 13, 1 }, { 15, 3, 20, 3 },
            { 20, 3, 20, 9 }, { 3, 7, 9, 7 }, { 11, 7, 11, 12 }, { 9, 19, 21, 21 } }));
    ExpectPicture(Drawn([](BView& v) { v.StrokeLine(BPoint(2, 2), BPoint(12, 12)); }),
        [](int x, int y) { return x == y && x >= 2 && x <= 12 ? kBlack : kWhite; });
}

TEST_F(ShapesTest, EllipsesTouchTheirRectangle)
{
    for (const BRect rect : { BRect(3, 4, 33, 24), BRect(0, 0, 39, 29), BRect(5, 5, 16, 12) }) {
        SCOPED_TRACE(rect.right);
        const BRect swapped(rect.right, rect.bottom, rect.left, rect.top);
        const BPoint middle((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
        const Picture stroked = Drawn([&](BView& v) { v.StrokeEllipse(swapped); });
        EXPECT_EQ(stroked.ExtentOf(kBlack).rect, rect);
        EXPECT_EQ(stroked.At(middle.x, middle.y), kWhite);
        const auto filled = Drawn([&](BView& v) { v.FillEllipse(swapped); }).ExtentOf(kBlack);
        EXPECT_TRUE(rect.Contains(filled.rect));
        EXPECT_TRUE(filled.rect.Contains(rect.InsetByCopy(1, 1)));
        const double area = std::numbers::pi / 4 * (rect.Width() + 1) * (rect.Height() + 1);
        EXPECT_NEAR(filled.count, area, 0.1 * area);
    }
}

TEST_F(ShapesTest, TrianglesAreThreeLinesOrWhatLiesBetween)
{
    const BPoint a(2, 3), b(36, 8), c(15, 27);
    const Picture stroked = Drawn([&](BView& v) { v.StrokeTriangle(a, b, c); });
    const Picture lines = Drawn([&](BView& v) {
        v.StrokeLine(a, b);
        v.StrokeLine(b, c);
        v.StrokeLine(c, a);
    });
    EXPECT_EQ(stroked.pixels, lines.pixels);
    const auto filled = Drawn([&](BView& v) { v.FillTriangle(a, b, c); }).ExtentOf(kBlack);
    EXPECT_TRUE(BRect(2, 3, 36, 27).Contains(filled.rect));
    EXPECT_NEAR(filled.count, 375.5, 15); // half the cross product of two sides
}

TEST_F(ShapesTest, PatternsAndModes)
{
    const pattern corner { { 0x80, 0, 0, 0, 0, 0, 0, 0x01 } };
    const auto isCorner = [](int x, int y) {
        return (x % 8 == 0 && y % 8 == 0) || (x % 8 == 7 && y % 8 == 7);
    };
    const auto filled = [this](drawing_mode mode, const pattern& with) {
        return Drawn([&](BView& v) {
            v.SetLowColor(rgb_color { 255, 0, 0 });
            v.SetDrawingMode(mode);
            v.FillRect(v.Bounds(), with);
        });
    };
    ExpectPicture(filled(B_OP_COPY, B_MIXED_COLORS),
        [](int x, int y) { return (x + y) % 2 == 0 ? kBlack : kRed; });
    ExpectPicture(filled(B_OP_OVER, B_SOLID_LOW), [](int, int) { return kWhite; });
    ExpectPicture(
        filled(B_OP_COPY, corner), [&](int x, int y) { return isCorner(x, y) ? kBlack : kRed; });
    ExpectPicture(
        filled(B_OP_OVER, corner), [&](int x, int y) { return isCorner(x, y) ? kBlack : kWhite; });
    const Picture scrolled = Drawn([&](BView& v) {
        v.ScrollTo(3, 5);
        v.FillRect(v.Bounds(), corner); // which stays with the contents; a line after it is solid
        v.StrokeLine(BPoint(3, 9), BPoint(42, 9));
    });
    ExpectPicture(
        scrolled, [&](int x, int y) { return y == 4 || isCorner(x + 3, y + 5) ? kBlack : kWhite; });
}

TEST_F(ShapesTest, ColorsReachTheScreenAsTheyAreAndInverted)
{
    const Picture shown = Drawn([](BView& v) {
        v.SetHighColor(rgb_color { 10, 200, 255, 0 }); // whatever alpha is
        v.FillRect(BRect(0, 0, 9, 9));
        v.InvertRect(BRect(19, 9, 0, 0)); // swapped corners
        v.InvertRect(BRect(0, 5, 19, 9));
    });
    ExpectPicture(shown, [](int x, int y) {
        if (y > 4)
            return x <= 9 && y <= 9 ? 0x0ac8ffu : kWhite;
        return x > 19 ? kWhite : x > 9 ? kBlack : 0xf53700u;
    });
}

} // namespace
