#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <Rect.h>

#include <sstream>

namespace {
std::string Text(const BPoint& point)
{
    std::ostringstream text;
    text << point.x << ' ' << point.y;
    return text.str();
}

std::string Text(const BRect& rect)
{
    return Text(rect.LeftTop()) + " " + Text(rect.RightBottom());
}

std::string Text(bool is)
{
    return is ? "yes" : "no";
}

// The numbers there; those that are missing are 0.
BRect RectOf(const std::string& text)
{
    float sides[4] = {};
    std::istringstream numbers(text);
    for (float& side : sides)
        numbers >> side;
    return { { sides[0], sides[1] }, { sides[2], sides[3] } };
}
} // namespace

TEST(Rect, DoesWhatItsCallsSay)
{
    using Call = std::string (*)(BRect, BRect);
    const std::map<std::string, Call> calls = {
        { "size",
            [](BRect a, BRect) {
                return Text({ a.Width(), a.Height() }) + " "
                    + Text({ float(a.IntegerWidth()), float(a.IntegerHeight()) });
            } },
        { "corners",
            [](BRect a, BRect) { return Text(a.RightTop()) + " " + Text(a.LeftBottom()); } },
        { "valid", [](BRect a, BRect) { return Text(a.IsValid()); } },
        { "inset", [](BRect a, BRect b) { return Text(a.InsetByCopy(b.left, b.top)); } },
        { "moved by", [](BRect a, BRect b) { return Text(a.OffsetByCopy(b.left, b.top)); } },
        { "copied to", [](BRect a, BRect b) { return Text(a.OffsetToCopy(b.left, b.top)); } },
        { "moved to", [](BRect a, BRect b) { return a.OffsetTo(b.LeftTop()), Text(a); } },
        { "holds", [](BRect a, BRect b) { return Text(a.Contains(b.LeftTop())); } },
        { "holds all", [](BRect a, BRect b) { return Text(a.Contains(b)); } },
        { "meets", [](BRect a, BRect b) { return Text(a.Intersects(b)); } },
        { "and", [](BRect a, BRect b) { return Text(a & b); } },
        { "or", [](BRect a, BRect b) { return Text(a | b); } },
        { "keeps",
            [](BRect a, BRect b) {
                BPoint point;
                point.Set(b.left, b.top);
                point.ConstrainTo(a);
                return Text(point);
            } },
        { "sum", [](BRect a, BRect) { return Text(a.LeftTop() + a.RightBottom()); } },
        { "difference", [](BRect a, BRect) { return Text(a.LeftTop() - a.RightBottom()); } },
    };
    for (const Row& row : RowsOf("kits/support/data/rectangles.txt", 4))
        EXPECT_EQ(calls.at(row[1])(RectOf(row[0]), RectOf(row[2])), row[3])
            << row[0] << " " << row[1] << " " << row[2];
}
