#include "tests/support/Rows.h"
#include "TestWindow.h"

TEST(ViewTree, AFontIsTakenInTheAskedForPartsOnly)
{
    BFont other(be_fixed_font), taken;
    other.SetFace(B_BOLD_FACE);
    other.SetSize(33);
    std::string told;
    for (const uint32 parts : { B_FONT_FAMILY_AND_STYLE, B_FONT_SIZE, B_FONT_FACE, B_FONT_ALL }) {
        BView view(BRect(0, 0, 9, 9), "view", B_FOLLOW_NONE, 0);
        view.SetFont(nullptr);
        view.SetFont(&other, parts);
        view.GetFont(&taken);
        EXPECT_FALSE(view.ShowsOnly(white_color).has_value()) << "it has never been drawn";
        font_family family;
        font_style style;
        taken.GetFamilyAndStyle(&family, &style);
        told += std::string(family) + " " + style + " " + std::to_string(taken.Face()) + " "
            + std::to_string(std::lround(taken.Size())) + "\n";
    }
    EXPECT_EQ(
        told, "Monospace Bold 32 12\nSans Regular 64 33\nSans Bold 32 12\nMonospace Bold 32 33\n");
}

TEST(ViewTree, EdgesFollowTheParentsEdgesAndComeBack)
{
    const BRect frame(10, 20, 49, 59);
    for (const Row& row : RowsOf("kits/interface/follow.txt", 8)) {
        float n[8];
        for (int i = 2; i < 8; i++)
            n[i] = std::stof(row[i]);
        BView parent(BRect(0, 0, 99, 99), "parent", B_FOLLOW_NONE, 0);
        auto* child = new BView(frame, "child", std::stoi(row[1], nullptr, 16), 0);
        parent.AddChild(child);
        parent.ResizeBy(n[2], n[3]);
        EXPECT_EQ(child->Frame(), BRect(n[4], n[5], n[6], n[7])) << row[0];
        parent.ResizeBy(-n[2], -n[3]);
        EXPECT_EQ(child->Frame(), frame) << row[0];
    }
}
