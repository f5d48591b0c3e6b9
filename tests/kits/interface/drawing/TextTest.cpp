// Fonts, and the coding of text.
#include "drawing/FontFace.h"
#include "Font.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"
#include "TextCoding.h"
#include "View.h"

namespace {

TEST(Font, KnowsItsStylesAndTheWidthsThatAddUp)
{
    font_family family;
    font_style shown;
    for (const Row& row : RowsOf("kits/interface/drawing/styles.txt", 3)) {
        BFont styled;
        EXPECT_EQ(styled.SetFamilyAndStyle(nullptr, row[0].c_str()), B_OK);
        EXPECT_EQ(styled.Face(), std::stoi(row[1], nullptr, 16)) << row[0];
        styled.SetFace(styled.Face());
        styled.GetFamilyAndStyle(&family, &shown);
        EXPECT_EQ(shown, row[2]);
    }
    for (const int length : { 0, 1, 63, 64, 101 }) { // of a name
        BFont named;
        const std::string name(length, 'n');
        const bool fits = length > 0 && length < 64;
        EXPECT_EQ(
            named.SetFamilyAndStyle(name.c_str(), nullptr), fits ? status_t { B_OK } : B_BAD_VALUE);
        EXPECT_EQ(
            named.SetFamilyAndStyle(nullptr, name.c_str()), fits ? status_t { B_OK } : B_BAD_VALUE);
        named.GetFamilyAndStyle(&family, &shown);
        EXPECT_EQ(family + std::string(shown), fits ? name + name : "SansRegular");
        named.SetSize(length);
        EXPECT_EQ(named.Size(), std::max(length, 1));
        named.SetSize(20 * length);
        EXPECT_EQ(FontFace::Request(named, 0.5f).pixels, std::clamp(10 * length, 1, 1000));
    }
    const BFont& font = *be_plain_font;
    EXPECT_EQ(font.StringWidth("Tarvex"), font.StringWidth("Tar") + font.StringWidth("vex"));
    EXPECT_EQ(font.StringWidth("Tarvex", 3), font.StringWidth("Tar", 99));
    EXPECT_EQ(
        font.StringWidth(nullptr, 3) + font.StringWidth("Tar", 0) + font.StringWidth("T", -1), 0);
    BView view(BRect(), "view", B_FOLLOW_NONE, 0);
    view.SetFont(be_fixed_font);
    EXPECT_EQ(view.StringWidth("mmm"), view.StringWidth("iii"));
}

TEST(Utf8, EachBadByteIsOneReplacementCharacter)
{
    for (const Row& row : RowsOf("kits/interface/drawing/utf8.txt", 3)) {
        std::ostringstream characters;
        for (const char *next = row[1].data(), *end = next + row[1].size(); next < end;)
            characters << std::hex << uint32 { NextCharacter(next, end) }
                       << (next < end ? " " : "");
        EXPECT_EQ(characters.str(), row[2]) << row[0];
    }
}

} // namespace
