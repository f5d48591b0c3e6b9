// Shapes on the screen against pictures of what they should be.
#include "Canvas.h"

namespace {

using ShapesTest = CanvasTest;

TEST_F(ShapesTest, LookAsTheyAlwaysDid)
{
    const pattern corner { { 0x80, 0, 0, 0, 0, 0, 0, 0x01 } };
    const BRect swapped(33, 24, 3, 4);
    const std::pair<const char*, std::function<void(BView&)>> rows[] = {
        { "rectangles",
            [](BView& v) {
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
            } },
        { "lines, both end points drawn",
            [](BView& v) {
                v.StrokeLine(BPoint(3, 4), BPoint(10, 4));
                v.StrokeLine(BPoint(1, 12), BPoint(1, 4)); // upwards
                v.StrokeLine(BPoint(13, 1), BPoint(13, 1));
                v.StrokeLine(BPoint(15, 3), BPoint(20, 8));
                v.StrokeEllipse(BRect(3, 7, 9, 7)); // as flat as a line
                v.FillEllipse(BRect(11, 7, 11, 12));
                float y = 2;
                for (const float pen : { 1.4f, 1.5f, 3.0f, 2.0f, 0.0f }) {
                    v.SetPenSize(pen);
                    v.StrokeLine(BPoint(25, y), BPoint(35, y));
                    y += 5;
                }
            } },
        { "ellipse", [&](BView& v) { v.StrokeEllipse(swapped); } },
        { "filled ellipses",
            [&](BView& v) {
                v.FillEllipse(swapped);
                v.FillEllipse(BRect(35, 2, 36, 8)); // a circle's would have holes
                v.FillEllipse(BRect(35, 12, 37, 14));
                v.FillEllipse(BRect(22, 27, 32, 28));
            } },
        { "triangle",
            [](BView& v) {
                v.StrokeTriangle({ 2, 3 }, { 36, 8 }, { 15, 27 });
            } },
        { "filled triangle",
            [](BView& v) {
                v.FillTriangle({ 2, 3 }, { 36, 8 }, { 15, 27 });
            } },
        { "patterns, those of B_OP_OVER on the right",
            [&](BView& v) {
                v.SetLowColor(rgb_color { 255, 0, 0 });
                for (const drawing_mode mode : { B_OP_COPY, B_OP_OVER }) {
                    const float left = mode == B_OP_OVER ? 20 : 0;
                    v.SetDrawingMode(mode);
                    v.FillRect(BRect(left, 0, left + 17, 4), B_MIXED_COLORS);
                    v.FillRect(BRect(left, 6, left + 17, 8), B_SOLID_LOW);
                    v.FillRect(BRect(left, 10, left + 17, 18), corner);
                }
                v.ScrollTo(3, 5); // a pattern stays with the contents; a line after it is solid
                v.FillRect(BRect(3, 25, 42, 34), corner);
                v.StrokeLine(BPoint(3, 29), BPoint(42, 29));
            } },
        { "colors, as they are and inverted",
            [](BView& v) {
                v.SetHighColor(rgb_color { 16, 195, 255, 0 }); // whatever alpha is
                v.FillRect(BRect(0, 0, 9, 9));
                v.InvertRect(BRect(19, 9, 0, 0)); // swapped corners
                v.InvertRect(BRect(0, 5, 19, 9));
            } }
    };
    for (const auto& [title, draw] : rows)
        EXPECT_EQ(title + (":\n" + Drawn(draw)), title + (":\n" + Expected(title)));
}

} // namespace
