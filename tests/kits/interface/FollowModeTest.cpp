#include "kits/interface/FollowMode.h"

#include <gtest/gtest.h>

TEST(FollowMode, EdgesFollowTheParentsEdges)
{
    const BRect frame(10, 20, 49, 59);
    const struct {
        const char* name;
        uint32 mode;
        BRect grown; // after the parent became 100 wider and 60 higher
    } rows[] = {
        { "none", B_FOLLOW_NONE, BRect(10, 20, 49, 59) },
        { "left top", B_FOLLOW_LEFT | B_FOLLOW_TOP, BRect(10, 20, 49, 59) },
        { "right bottom", B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, BRect(110, 80, 149, 119) },
        { "right top", B_FOLLOW_RIGHT | B_FOLLOW_TOP, BRect(110, 20, 149, 59) },
        { "left bottom", B_FOLLOW_LEFT | B_FOLLOW_BOTTOM, BRect(10, 80, 49, 119) },
        { "left right, top", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, BRect(10, 20, 149, 59) },
        { "left, top bottom", B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM, BRect(10, 20, 49, 119) },
        { "all sides", B_FOLLOW_ALL_SIDES, BRect(10, 20, 149, 119) },
        { "middles", B_FOLLOW_H_CENTER | B_FOLLOW_V_CENTER, BRect(60, 50, 99, 89) },
        { "middle, top", B_FOLLOW_H_CENTER | B_FOLLOW_TOP, BRect(60, 20, 99, 59) },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FollowParent(frame, row.mode, 100, 60), row.grown);
        EXPECT_EQ(FollowParent(row.grown, row.mode, -100, -60), frame);
    }
}

TEST(FollowMode, OddAmountsAndVanishingViewsComeBack)
{
    const BRect frame(10, 20, 49, 59);
    const uint32 middle = B_FOLLOW_H_CENTER | B_FOLLOW_V_CENTER;
    const BRect odd = FollowParent(frame, middle, 3, 1);
    EXPECT_EQ(odd, BRect(11.5, 20.5, 50.5, 59.5));
    EXPECT_EQ(FollowParent(odd, middle, -3, -1), frame);

    const BRect vanished = FollowParent(frame, B_FOLLOW_ALL_SIDES, -200, -200);
    EXPECT_FALSE(vanished.IsValid());
    EXPECT_EQ(FollowParent(vanished, B_FOLLOW_ALL_SIDES, 200, 200), frame);
}
