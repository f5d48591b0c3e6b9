#include "TestWindow.h"

TEST(ViewTree, ChildrenAreFoundInTheirOrder)
{
    const auto view = [](const char* name) {
        return new BView(BRect(0, 0, 9, 9), name, B_FOLLOW_NONE, 0);
    };
    BView top(BRect(0, 0, 99, 99), "top", B_FOLLOW_NONE, 0);
    BView* a = view("a");
    BView* b = view("b");
    BView* deep = view("deep");
    top.AddChild(b);
    top.AddChild(a, b);
    b->AddChild(deep);
    EXPECT_EQ(top.ChildAt(0), a);
    EXPECT_EQ(a->NextSibling(), b);
    EXPECT_EQ(top.FindView("deep"), deep);
    EXPECT_EQ(a->FindView("deep"), nullptr);

    a->AddChild(deep); // it has a parent: refused
    EXPECT_EQ(deep->Parent(), b);
    EXPECT_FALSE(top.RemoveChild(deep));
    EXPECT_TRUE(deep->RemoveSelf());
    delete deep;
    delete a; // takes itself out
    EXPECT_EQ(top.CountChildren(), 1);
}

TEST(ViewTree, EdgesFollowTheParentsEdgesAndComeBack)
{
    const BRect frame(10, 20, 49, 59);
    const uint32 middle = B_FOLLOW_H_CENTER | B_FOLLOW_V_CENTER;
    // width, height: that the parent grows by
    const std::tuple<const char*, uint32, float, float, BRect> rows[] = {
        { "none", B_FOLLOW_NONE, 100, 60, BRect(10, 20, 49, 59) },
        { "left top", B_FOLLOW_LEFT | B_FOLLOW_TOP, 100, 60, BRect(10, 20, 49, 59) },
        { "right bottom", B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, 100, 60, BRect(110, 80, 149, 119) },
        { "left right, top", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, 100, 60, BRect(10, 20, 149, 59) },
        { "left, top bottom", B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM, 100, 60,
            BRect(10, 20, 49, 119) },
        { "middles", middle, 100, 60, BRect(60, 50, 99, 89) },
        { "odd amounts", middle, 3, 1, BRect(11.5, 20.5, 50.5, 59.5) },
        { "below nothing", B_FOLLOW_ALL_SIDES, -200, -200, BRect(10, 20, -151, -141) }
    };
    for (const auto& [name, mode, width, height, grown] : rows) {
        BView parent(BRect(0, 0, 99, 99), "parent", B_FOLLOW_NONE, 0);
        auto* child = new BView(frame, "child", mode, 0);
        parent.AddChild(child);
        parent.ResizeBy(width, height);
        EXPECT_EQ(child->Frame(), grown) << name;
        parent.ResizeBy(-width, -height);
        EXPECT_EQ(child->Frame(), frame) << name;
    }
}
