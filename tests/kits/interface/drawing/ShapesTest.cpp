// Shapes on the screen against pictures worked out here.
#include "Canvas.h"

#include <cmath>

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

double DistanceToSegment(double x, double y, BPoint from, BPoint to)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = dx * dx + dy * dy;
    const double along = length == 0 ? 0 : ((x - from.x) * dx + (y - from.y) * dy) / length;
    const double part = std::min(std::max(along, 0.0), 1.0);
    return std::hypot(x - from.x - part * dx, y - from.y - part * dy);
}

// Below 0 inside the ellipse that touches the rectangle's edges, roughly in pixels.
double EllipseDistance(double x, double y, BRect rect)
{
    const double a = rect.Width() / 2;
    const double b = rect.Height() / 2;
    const double u = (x - rect.left - a) / a;
    const double v = (y - rect.top - b) / b;
    const double radius = std::hypot(u, v);
    return radius == 0 ? -std::min(a, b) : (radius - 1) * radius / std::hypot(u / a, v / b);
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
        { "filled", [](BView& v) { v.FillRect(BRect(0, 0, 9, 9)); }, BlackArea(0, 0, 9, 9) },
        { "filled, corners swapped", [](BView& v) { v.FillRect(BRect(12, 8, 3, 2)); },
            BlackArea(3, 2, 12, 8) },
        { "filled, halves go right and down",
            [](BView& v) { v.FillRect(BRect(0.4f, 0.5f, 3.5f, 3.6f)); }, BlackArea(0, 1, 4, 4) },
        { "filled, one pixel", [](BView& v) { v.FillRect(BRect(5, 5, 5, 5)); },
            BlackArea(5, 5, 5, 5) },
        { "filled, over all edges", [](BView& v) { v.FillRect(BRect(-9, -9, 99, 99)); },
            BlackArea(0, 0, kWidth, kHeight) },
        { "filled, out of the server's range",
            [](BView& v) { v.FillRect(BRect(-1e9f, 5, 1e9f, 6)); }, BlackArea(0, 5, kWidth, 6) },
        { "filled, outside", [](BView& v) { v.FillRect(BRect(40, 30, 60, 60)); },
            Black([](int, int) { return false; }) },
        { "stroked", [](BView& v) { v.StrokeRect(BRect(2, 3, 10, 8)); }, BlackFrame(2, 3, 10, 8) },
        { "stroked, corners swapped", [](BView& v) { v.StrokeRect(BRect(10, 8, 2, 3)); },
            BlackFrame(2, 3, 10, 8) },
        { "stroked, one pixel", [](BView& v) { v.StrokeRect(BRect(4, 4, 4, 4)); },
            BlackArea(4, 4, 4, 4) },
        { "stroked, over the edges", [](BView& v) { v.StrokeRect(BRect(-5, -5, 39, 5)); },
            Black([](int x, int y) { return (x == 39 && y <= 5) || y == 5; }) },
        { "stroked, pen of 3",
            [](BView& v) {
                v.SetPenSize(3);
                v.StrokeRect(BRect(5, 5, 20, 20));
            },
            Black([](int x, int y) {
                const bool inside = x >= 4 && x <= 21 && y >= 4 && y <= 21;
                return inside && (x < 7 || x > 18 || y < 7 || y > 18);
            }) },
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
        { "across the whole view", [](BView& v) { v.StrokeLine(BPoint(-50, 9), BPoint(90, 9)); },
            BlackArea(0, 9, kWidth, 9) },
        { "from the pen, which comes along",
            [](BView& v) {
                v.MovePenTo(2, 2);
                v.MovePenBy(1, 1);
                v.StrokeLine(BPoint(8, 3));
                v.StrokeLine(BPoint(8, 9));
                EXPECT_EQ(v.PenLocation(), BPoint(8, 9));
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
    });
}

TEST_F(ShapesTest, SlopingLinesStayWithinAPixelOfTheTrueOne)
{
    const struct {
        BPoint from, to;
    } rows[] = { { { 1, 1 }, { 30, 9 } }, { { 30, 28 }, { 25, 2 } }, { { 0, 29 }, { 39, 0 } },
        { { 8, 3 }, { 1, 20 } } };
    for (const auto& row : rows) {
        const Picture shown = Drawn([&](BView& v) { v.StrokeLine(row.from, row.to); });
        SCOPED_TRACE(testing::Message() << row.from.x << ", " << row.from.y);
        EXPECT_EQ(shown.At(row.from.x, row.from.y), kBlack);
        EXPECT_EQ(shown.At(row.to.x, row.to.y), kBlack);
        EXPECT_EQ(shown.ExtentOf(kBlack).count,
            1 + std::max(std::abs(row.to.x - row.from.x), std::abs(row.to.y - row.from.y)));
        for (int y = 0; y < kHeight; y++) {
            for (int x = 0; x < kWidth; x++) {
                if (shown.At(x, y) == kBlack) {
                    EXPECT_LT(DistanceToSegment(x, y, row.from, row.to), 0.75) << x << ", " << y;
                }
            }
        }
    }
}

TEST_F(ShapesTest, EllipsesTouchTheirRectangle)
{
    for (const BRect rect : { BRect(3, 4, 33, 24), BRect(0, 0, 39, 29), BRect(5, 5, 16, 12) }) {
        const BRect swapped(rect.right, rect.bottom, rect.left, rect.top);
        const Picture stroked = Drawn([&](BView& v) { v.StrokeEllipse(swapped); });
        const Picture filled = Drawn([&](BView& v) { v.FillEllipse(swapped); });
        SCOPED_TRACE(rect.right);
        const auto extent = stroked.ExtentOf(kBlack);
        EXPECT_EQ(BRect(extent.left, extent.top, extent.right, extent.bottom), rect);
        for (int y = 0; y < kHeight; y++) {
            for (int x = 0; x < kWidth; x++) {
                const double distance = EllipseDistance(x, y, rect);
                if (stroked.At(x, y) == kBlack) {
                    EXPECT_LT(std::abs(distance), 1) << "stroked " << x << ", " << y;
                }
                if (std::abs(distance) > 1.1) {
                    EXPECT_EQ(filled.At(x, y), distance < 0 ? kBlack : kWhite) << x << ", " << y;
                }
                if (filled.At(x, y) == kBlack) {
                    EXPECT_TRUE(rect.Contains(BPoint(x, y))) << "filled " << x << ", " << y;
                }
            }
        }
    }
}

TEST_F(ShapesTest, EllipsesAsFlatAsALineAreOne)
{
    Check({
        { "stroked", [](BView& v) { v.StrokeEllipse(BRect(3, 4, 9, 4)); }, BlackArea(3, 4, 9, 4) },
        { "filled", [](BView& v) { v.FillEllipse(BRect(3, 4, 3, 9)); }, BlackArea(3, 4, 3, 9) },
        { "by centre and radii", [](BView& v) { v.FillEllipse(BPoint(10, 10), 4, 0); },
            BlackArea(6, 10, 14, 10) },
    });
}

TEST_F(ShapesTest, TrianglesAreClosed)
{
    const BPoint a(2, 3), b(36, 8), c(15, 27);
    const Picture stroked = Drawn([&](BView& v) { v.StrokeTriangle(a, b, c); });
    const Picture filled = Drawn([&](BView& v) { v.FillTriangle(a, b, c); });
    for (const BPoint corner : { a, b, c })
        EXPECT_EQ(stroked.At(corner.x, corner.y), kBlack);
    const auto side = [](BPoint p, BPoint q, double x, double y) {
        return (q.x - p.x) * (y - p.y) - (q.y - p.y) * (x - p.x);
    };
    for (int y = 0; y < kHeight; y++) {
        for (int x = 0; x < kWidth; x++) {
            const double distance = std::min({ DistanceToSegment(x, y, a, b),
                DistanceToSegment(x, y, b, c), DistanceToSegment(x, y, c, a) });
            const bool inside =
                side(a, b, x, y) > 0 && side(b, c, x, y) > 0 && side(c, a, x, y) > 0;
            if (distance < 0.35 || distance > 0.75) {
                EXPECT_EQ(stroked.At(x, y), distance < 0.35 ? kBlack : kWhite) << x << ", " << y;
            }
            if (distance > 0.75) {
                EXPECT_EQ(filled.At(x, y), inside ? kBlack : kWhite) << x << ", " << y;
            }
        }
    }
}

TEST_F(ShapesTest, ColorsReachTheScreenAsTheyAre)
{
    for (const uint32 color : { 0xfe0080u, 0x000001u, 0x7f8081u, 0x00ff00u }) {
        const Picture shown = Drawn([&](BView& v) {
            v.SetHighColor(color >> 16, color >> 8, color, 0); // whatever alpha is
            v.FillRect(v.Bounds());
        });
        ExpectPicture(shown, [color](int, int) { return color; });
    }
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
        { "low colour",
            [&](BView& v) {
                withRed(v, B_OP_COPY);
                v.FillRect(v.Bounds(), B_SOLID_LOW);
            },
            [](int, int) { return kRed; } },
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
        { "pattern of a scrolled view stays with its contents",
            [&](BView& v) {
                v.ScrollTo(3, 5);
                v.FillRect(v.Bounds(), corner);
            },
            rest(kWhite, [&](int x, int y) { return isCorner(x + 3, y + 5); }) },
        { "a line after a pattern is solid",
            [&](BView& v) {
                v.FillRect(BRect(0, 10, 39, 29), corner);
                v.StrokeLine(BPoint(0, 4), BPoint(39, 4));
            },
            rest(kWhite, [&](int x, int y) { return y == 4 || (y >= 10 && isCorner(x, y)); }) },
    });
}

TEST_F(ShapesTest, ScrolledViewsShowWhatLiesAtTheirOrigin)
{
    Check({
        { "right and down",
            [](BView& v) {
                v.ScrollTo(7, 3);
                v.FillRect(BRect(0, 0, 10, 5));
            },
            BlackArea(0, 0, 3, 2) },
        { "left and up, by fractions",
            [](BView& v) {
                v.ScrollTo(-2.5f, -1);
                v.FillRect(BRect(0, 0, 4.5f, 4));
            },
            BlackArea(3, 1, 7, 5) },
    });
}

TEST_F(ShapesTest, InvertingSwapsEachColorWithItsComplement)
{
    const auto prepare = [](BView& v) {
        v.SetHighColor(10, 200, 255);
        v.FillRect(BRect(0, 0, 9, 9));
        v.InvertRect(BRect(0, 0, 19, 9));
    };
    Check({
        { "once", prepare,
            [](int x, int y) { return y > 9 || x > 19 ? kWhite
                                   : x > 9            ? kBlack
                                                      : 0xf53700u; } },
        { "part of it twice",
            [&](BView& v) {
                prepare(v);
                v.InvertRect(BRect(5, 9, 15, 5)); // swapped corners
            },
            [](int x, int y) {
                if (y > 9 || x > 19)
                    return kWhite;
                const bool twice = x >= 5 && x <= 15 && y >= 5;
                return x > 9 ? (twice ? kWhite : kBlack) : (twice ? 0x0ac8ffu : 0xf53700u);
            } },
    });
}

} // namespace
