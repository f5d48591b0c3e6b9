#include "kits/interface/FollowMode.h"

#include <gtest/gtest.h>

#include <tuple>

TEST(FollowMode, EdgesFollowTheParentsEdges)
{
    const BRect frame(10, 20, 49, 59);
    // The frame after the parent became 100 wider and 60 higher.
    const std::tuple<const char*, uint32, BRect> rows[] = {
        { "none", B_FOLLOW_NONE, BRect(10, 20, 49, 59) },
        { "left top", B_FOLLOW_LEFT | B_FOLLOW_TOP, BRect(10, 20, 49, 59) },
        { "right bottom", B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, BRect(110, 80, 149, 119) },
        { "left right, top", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, BRect(10, 20, 149, 59) },
        { "left, top bottom", B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM, BRect(10, 20, 49, 119) },
        { "middles", B_FOLLOW_H_CENTER | B_FOLLOW_V_CENTER, BRect(60, 50, 99, 89) },
    };
    for (const auto& [name, mode, grown] : rows) {
        EXPECT_EQ(FollowParent(frame, mode, 100, 60), grown) << name;
        EXPECT_EQ(FollowParent(grown, mode, -100, -60), frame) << name;
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
