#include "tests/support/Test.h"

#include <Rect.h>

namespace {

using Numbers = std::vector<float>;

Numbers In(const BRect& rect)
{
    return { rect.left, rect.top, rect.right, rect.bottom };
}

Numbers In(const BPoint& point)
{
    return { point.x, point.y };
}

// What has been done to a copy.
template <class Object, class Change>
Numbers After(Object object, Change change)
{
    change(object);
    return In(object);
}

TEST(Rect, SidesGoWhereTheCallSays)
{
    const BRect rect(1, 2, 10, 20);
    const BPoint point(3, 5);
    const std::pair<Numbers, Numbers> rows[] = { { In(rect.InsetByCopy(1, 3)), { 2, 5, 9, 17 } },
        { In(rect.OffsetByCopy(1, 3)), { 2, 5, 11, 23 } },
        { In(rect.OffsetToCopy(5, 9)), { 5, 9, 14, 27 } },
        { After(rect, [&](BRect& r) { r.OffsetTo(point); }), { 3, 5, 12, 23 } },
        { After(rect, [](BRect& r) { r.Set(4, 3, 2, 1); }), { 4, 3, 2, 1 } },
        { In(rect & BRect(5, 0, 30, 6)), { 5, 2, 10, 6 } },
        { In(rect | BRect(5, 0, 30, 6)), { 1, 0, 30, 20 } },
        { In(rect & BRect(0, 5, 6, 30)), { 1, 5, 6, 20 } },
        { In(rect | BRect(0, 5, 6, 30)), { 0, 2, 10, 30 } },
        { In(BRect(rect.LeftTop(), rect.RightBottom())), In(rect) },
        { In(BRect(rect.LeftBottom(), rect.RightTop())), { 1, 20, 10, 2 } },
        { { rect.Width(), rect.Height() }, { 9, 18 } },
        { { BRect(0, 0, 9.25f, 9).IntegerWidth() + 0.f,
              BRect(0, 0, 9, 8.5f).IntegerHeight() + 0.f },
            { 10, 9 } },
        { In(point + BPoint(1, 2)), { 4, 7 } }, { In(point - BPoint(1, 2)), { 2, 3 } },
        { After(point, [](BPoint& p) { p += BPoint(1, 2); }), { 4, 7 } },
        { After(point, [](BPoint& p) { p -= BPoint(1, 2); }), { 2, 3 } },
        { After(point, [](BPoint& p) { p.Set(7, 8); }), { 7, 8 } },
        { After(point, [&](BPoint& p) { p.ConstrainTo(BRect(5, 6, 7, 8)); }), { 5, 6 } },
        { After(point, [&](BPoint& p) { p.ConstrainTo(BRect(0, 0, 1, 2)); }), { 1, 2 } },
        { After(point, [&](BPoint& p) { p.ConstrainTo(rect); }), { 3, 5 } },
        { After(point, [&](BPoint& p) { p.ConstrainTo(BRect(9, 8, 0, 0)); }), { 9, 8 } },
        { In(B_ORIGIN), { 0, 0 } } };
    for (size_t i = 0; i < std::size(rows); i++)
        EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
}

TEST(Rect, ContainsItsEdgesAndNothingIfInsideOut)
{
    const BRect rect(1, 2, 10, 20);
    // Another one; whether it is valid, shares something with it, lies in it.
    const std::pair<BRect, const char*> rows[] = { { rect, "vic" }, { { 10, 20, 30, 30 }, "vi-" },
        { { 11, 20, 30, 30 }, "v--" }, { { 10, 21, 30, 30 }, "v--" }, { { -5, -5, 1, 2 }, "vi-" },
        { { -5, -5, 0, 2 }, "v--" }, { { -5, -5, 1, 1 }, "v--" }, { { 5, 5, 5, 5 }, "vic" },
        { { 1, 2, 10, 21 }, "vi-" }, { { 1, 2, 11, 20 }, "vi-" }, { { 0, 2, 10, 20 }, "vi-" },
        { { 1, 1, 10, 20 }, "vi-" }, { { 5, 5, 4, 5 }, "---" }, { { 5, 5, 5, 4 }, "---" },
        { BRect(), "---" } };
    for (const auto& [other, expected] : rows) {
        std::string found = other.IsValid() ? "v" : "-";
        found += rect.Intersects(other) ? "i" : "-";
        found += rect.Contains(other) ? "c" : "-";
        EXPECT_EQ(found, expected) << testing::PrintToString(In(other));
        EXPECT_EQ(other.Intersects(rect), found[1] == 'i');
        EXPECT_EQ(rect.Contains(other.LeftTop()) && rect.Contains(other.RightBottom()),
            found[2] == 'c' || (other.right == 4 || other.bottom == 4));
    }
    EXPECT_FALSE(BRect(20, 30, 0, 0).Contains(rect) || BRect(20, 30, 0, 0).Contains(BPoint(5, 5)));
}

} // namespace
