#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <Rect.h>

#include <sstream>

namespace {
template <class... Numbers>
std::string Text(Numbers... numbers)
{
    std::ostringstream text;
    ((text << numbers << ' '), ...);
    return text.str();
}

std::string Text(BPoint point)
{
    return Text(point.x, point.y);
}

std::string Text(BRect rect)
{
    return Text(rect.LeftTop()) + Text(rect.RightBottom());
}
} // namespace

TEST(Rect, DoesWhatItsCallsSay)
{
    using Call = std::string (*)(BRect, BRect, BPoint);
    const std::map<std::string, Call> calls = {
        { "size",
            [](BRect a, BRect, BPoint) {
                return Text(a.Width(), a.Height(), a.IntegerWidth(), a.IntegerHeight());
            } },
        { "corners",
            [](BRect a, BRect, BPoint) { return Text(a.RightTop()) + Text(a.LeftBottom()); } },
        { "valid", [](BRect a, BRect, BPoint) { return Text(a.IsValid()); } },
        { "inset", [](BRect a, BRect, BPoint b) { return Text(a.InsetByCopy(b.x, b.y)); } },
        { "moved by", [](BRect a, BRect, BPoint b) { return Text(a.OffsetByCopy(b.x, b.y)); } },
        { "copied to", [](BRect a, BRect, BPoint b) { return Text(a.OffsetToCopy(b.x, b.y)); } },
        { "moved to", [](BRect a, BRect, BPoint b) { return a.OffsetTo(b), Text(a); } },
        { "holds", [](BRect a, BRect, BPoint b) { return Text(a.Contains(b)); } },
        { "holds all", [](BRect a, BRect b, BPoint) { return Text(a.Contains(b)); } },
        { "meets", [](BRect a, BRect b, BPoint) { return Text(a.Intersects(b)); } },
        { "and", [](BRect a, BRect b, BPoint) { return Text(a & b); } },
        { "or", [](BRect a, BRect b, BPoint) { return Text(a | b); } },
        { "keeps", [](BRect a, BRect, BPoint b) { return b.ConstrainTo(a), Text(b); } },
        { "plus", [](BRect a, BRect, BPoint b) { return Text(a.LeftTop() + b); } },
        { "minus", [](BRect a, BRect, BPoint b) { return Text(a.LeftTop() - b); } },
    };
    for (const Row& row : RowsOf("kits/support/data/rectangles.txt", 4)) {
        float n[8] = {};
        std::istringstream numbers(row[0] + " " + row[2]);
        for (float& number : n)
            numbers >> number;
        BPoint point;
        point.Set(n[4], n[5]);
        EXPECT_EQ(calls.at(row[1])({ n[0], n[1], n[2], n[3] }, { n[4], n[5], n[6], n[7] }, point),
            row[3] + " ")
            << row[0] << " " << row[1] << " " << row[2];
    }
}
