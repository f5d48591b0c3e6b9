#include "tests/support/Rows.h"
#include "tests/support/Test.h"

#include <Rect.h>

// Up to four numbers; those that are missing are 0.
static BRect RectOf(const std::string& text)
{
    float sides[4] = {};
    std::istringstream numbers(text);
    for (float& side : sides)
        numbers >> side;
    return { { sides[0], sides[1] }, { sides[2], sides[3] } };
}

TEST(Rect, DoesWhatItsCallsSay)
{
    using Call = BRect (*)(BRect, BRect, BPoint);
    using B = BRect;
    using P = BPoint;
    const std::map<std::string, Call> calls = {
        { "size",
            [](B a, B, P) {
                return B(a.Width(), a.Height(), a.IntegerWidth(), a.IntegerHeight());
            } },
        { "corners", [](B a, B, P) { return B(a.RightTop(), a.LeftBottom()); } },
        { "others", [](B a, B, P) { return B(a.LeftTop(), a.RightBottom()); } },
        { "valid", [](B a, B, P) { return B(a.IsValid(), 0, 0, 0); } },
        { "inset", [](B a, B, P b) { return a.InsetByCopy(b.x, b.y); } },
        { "moved by", [](B a, B, P b) { return a.OffsetByCopy(b.x, b.y); } },
        { "copied to", [](B a, B, P b) { return a.OffsetToCopy(b.x, b.y); } },
        { "moved to", [](B a, B, P b) { return a.OffsetTo(b), a; } },
        { "holds", [](B a, B, P b) { return B(a.Contains(b), 0, 0, 0); } },
        { "holds all", [](B a, B b, P) { return B(a.Contains(b), 0, 0, 0); } },
        { "meets", [](B a, B b, P) { return B(a.Intersects(b), 0, 0, 0); } },
        { "and", [](B a, B b, P) { return a & b; } },
        { "or", [](B a, B b, P) { return a | b; } },
        { "keeps", [](B a, B, P b) { return b.ConstrainTo(a), B(b, P()); } },
        { "plus", [](B a, B, P b) { return B(a.LeftTop() + b, P()); } },
        { "minus", [](B a, B, P b) { return B(a.LeftTop() - b, P()); } },
    };
    for (const Row& row : RowsOf("kits/support/data/rectangles.txt", 4)) {
        const BRect other = RectOf(row[2]);
        BPoint point;
        point.Set(other.left, other.top);
        EXPECT_TRUE(calls.at(row[1])(RectOf(row[0]), other, point) == RectOf(row[3]))
            << testing::PrintToString(row);
    }
}
