// Shapes on the screen against pictures worked out here.
#include "Canvas.h"

#include <numbers>

namespace {

constexpr uint32 kRed = 0xff0000;

struct Row {
    const char* name;
    std::function<void(BView& view)> draw;
    PixelRule rule;
};

// Black where the condition holds, else white.
PixelRule Black(const std::function<bool(int x, int y)>& condition)
{
    return [condition](int x, int y) { return condition(x, y) ? kBlack : kWhite; };
}

PixelRule BlackArea(int left, int top, int right, int bottom)
{
    return Black([=](int x, int y) { return x >= left && x <= right && y >= top && y <= bottom; });
}

PixelRule BlackFrame(int left, int top, int right, int bottom)
{
    return Black([=](int x, int y) {
        const bool inside = x >= left && x <= right && y >= top && y <= bottom;
        return inside && (x == left || x == right || y == top || y == bottom);
    });
}

class ShapesTest : public CanvasTest {
protected:
    void Check(const std::vector<Row>& rows)
    {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name);
            ExpectPicture(Drawn(row.draw), row.rule);
        }
    }
};

TEST_F(ShapesTest, RectanglesCoverTheirEdgesAndNothingBeyond)
{
    Check({
        { "filled, corners swapped", [](BView& v) { v.FillRect(BRect(12, 8, 3, 2)); },
            BlackArea(3, 2, 12, 8) },
        { "filled, halves go right and down",
            [](BView& v) { v.FillRect(BRect(0.4f, 0.5f, 3.5f, 3.6f)); }, BlackArea(0, 1, 4, 4) },
        { "filled, one pixel", [](BView& v) { v.FillRect(BRect(5, 5, 5, 5)); },
            BlackArea(5, 5, 5, 5) },
        { "filled, out of the server's range",
            [](BView& v) { v.FillRect(BRect(-1e9f, 5, 1e9f, 6)); }, BlackArea(0, 5, kWidth, 6) },
        { "stroked", [](BView& v) { v.StrokeRect(BRect(2, 3, 10, 8)); }, BlackFrame(2, 3, 10, 8) },
        { "stroked, corners swapped", [](BView& v) { v.StrokeRect(BRect(10, 8, 2, 3)); },
            BlackFrame(2, 3, 10, 8) },
        { "stroked, one pixel", [](BView& v) { v.StrokeRect(BRect(4, 4, 4, 4)); },
            BlackArea(4, 4, 4, 4) },
        { "filled, scrolled left and up by fractions",
            [](BView& v) {
                v.ScrollTo(-2.5f, -1);
                v.FillRect(BRect(0, 0, 4.5f, 4));
            },
            BlackArea(3, 1, 7, 5) },
        { "stroked, over the edges", [](BView& v) { v.StrokeRect(BRect(-5, -5, 39, 5)); },
            Black([](int x, int y) { return (x == 39 && y <= 5) || y == 5; }) },
    });
}

TEST_F(ShapesTest, LinesHaveBothEndPoints)
{
    Check({
        { "horizontal", [](BView& v) { v.StrokeLine(BPoint(3, 4), BPoint(10, 4)); },
            BlackArea(3, 4, 10, 4) },
        { "vertical, upwards", [](BView& v) { v.StrokeLine(BPoint(3, 12), BPoint(3, 4)); },
            BlackArea(3, 4, 3, 12) },
        { "diagonal", [](BView& v) { v.StrokeLine(BPoint(2, 2), BPoint(12, 12)); },
            Black([](int x, int y) { return x == y && x >= 2 && x <= 12; }) },
        { "one point", [](BView& v) { v.StrokeLine(BPoint(7, 7), BPoint(7, 7)); },
            BlackArea(7, 7, 7, 7) },
        { "from the pen, which comes along",
            [](BView& v) {
                v.MovePenTo(2, 2);
                v.MovePenBy(1, 1);
                v.StrokeLine(BPoint(8, 3));
                v.StrokeLine(BPoint(8, 9));
            },
            Black([](int x, int y) {
                return (y == 3 && x >= 3 && x <= 8) || (x == 8 && y >= 3 && y <= 9);
            }) },
        { "pen of 3",
            [](BView& v) {
                v.SetPenSize(3);
                v.StrokeLine(BPoint(10, 10), BPoint(20, 10));
            },
            BlackArea(9, 9, 21, 11) },
        { "an ellipse as flat", [](BView& v) { v.StrokeEllipse(BRect(3, 4, 9, 4)); },
            BlackArea(3, 4, 9, 4) },
        { "a filled one", [](BView& v) { v.FillEllipse(BRect(3, 4, 3, 9)); },
            BlackArea(3, 4, 3, 9) },
    });
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
        v.StrokeLine(c);
        v.StrokeLine(a);
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
    const auto withRed = [](BView& v, drawing_mode mode) {
        v.SetLowColor(255, 0, 0);
        v.SetDrawingMode(mode);
    };
    const auto rest = [](uint32 color, auto isHigh) {
        return [=](int x, int y) { return isHigh(x, y) ? kBlack : color; };
    };
    Check({
        { "mixed", [](BView& v) { v.FillRect(v.Bounds(), B_MIXED_COLORS); },
            Black([](int x, int y) { return (x + y) % 2 == 0; }) },
        { "low colour over",
            [&](BView& v) {
                withRed(v, B_OP_OVER);
                v.FillRect(v.Bounds(), B_SOLID_LOW);
            },
            [](int, int) { return kWhite; } },
        { "pattern copied",
            [&](BView& v) {
                withRed(v, B_OP_COPY);
                v.FillRect(v.Bounds(), corner);
            },
            rest(kRed, isCorner) },
        { "pattern over",
            [&](BView& v) {
                withRed(v, B_OP_OVER);
                v.FillRect(v.Bounds(), corner);
            },
            rest(kWhite, isCorner) },
        { "pattern of a scrolled view stays with its contents, a line after it is solid",
            [&](BView& v) {
                v.ScrollTo(3, 5);
                v.FillRect(v.Bounds(), corner);
                v.StrokeLine(BPoint(3, 9), BPoint(42, 9));
            },
            rest(kWhite, [&](int x, int y) { return y == 4 || isCorner(x + 3, y + 5); }) },
    });
}

TEST_F(ShapesTest, ColorsReachTheScreenAsTheyAreAndInverted)
{
    const Picture shown = Drawn([](BView& v) {
        v.SetHighColor(10, 200, 255, 0); // whatever alpha is
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
