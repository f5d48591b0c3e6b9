// Text on the screen, and the fonts it is measured with.
#include "Canvas.h"
#include "TextCoding.h"

namespace {

using TextTest = CanvasTest;

struct Extent {
    int count = 0;
    BRect rect;
};

// Where a picture shows anything but white.
Extent Ink(const std::string& picture)
{
    Extent ink;
    for (int i = 0; i < 41 * 30; i++) {
        if (picture[i] == '.' || picture[i] == '\n')
            continue;
        const BRect pixel(i % 41, i / 41, i % 41, i / 41);
        ink.rect = ink.count++ == 0 ? pixel : ink.rect | pixel;
    }
    return ink;
}

TEST_F(TextTest, StandsOnItsBaselineInsideItsMeasures)
{
    const BPoint pen(5, 20);
    for (const char* text : { "H", "jgpq", "x|" }) {
        SCOPED_TRACE(text);
        font_height height;
        be_plain_font->GetHeight(&height);
        const auto ink = Ink(Drawn([&](BView& v) { v.DrawString(text, pen); }));
        EXPECT_GT(ink.count, 0);
        EXPECT_GE(ink.rect.left, pen.x - 1); // some letters reach a pixel to the left
        EXPECT_LE(ink.rect.right, pen.x + be_plain_font->StringWidth(text));
        EXPECT_GT(ink.rect.top, pen.y - height.ascent - 1);
        EXPECT_LE(ink.rect.bottom, pen.y + height.descent + 1);
    }
    const std::string coloured = Drawn([&](BView& v) {
        v.SetHighColor(rgb_color { 16, 195, 255 });
        v.DrawString("HHH", pen);
    });
    EXPECT_EQ(Ink(coloured).rect.bottom, pen.y);
    EXPECT_GT(std::count(coloured.begin(), coloured.end(), 's'), 10); // the stems
}

TEST_F(TextTest, GoesOnByItsWidthAndWhatIsAddedToEachLetter)
{
    const auto parts = [this](const char* first, const char* second, float added) {
        return Drawn([=](BView& v) {
            v.DrawString(first, BPoint(3, 15));
            v.DrawString(second, BPoint(3 + v.StringWidth(first) + added, 15));
        });
    };
    const std::string whole = Drawn([](BView& v) { v.DrawString("axe", BPoint(3, 15)); });
    EXPECT_EQ(whole, parts("a", "xe", 0));
    const std::string spaced = Drawn([](BView& v) {
        escapement_delta delta { 2, 5 };
        v.DrawString("a e", BPoint(3, 15), &delta);
    });
    EXPECT_EQ(spaced, parts("a ", "e", 2 + 5));
}

TEST(Font, WidthsAddUpAndHeightsGrowWithTheSize)
{
    const std::pair<const char*, uint16> styles[] = { { "Bold", B_BOLD_FACE },
        { "Italic", B_ITALIC_FACE }, { "Oblique", B_ITALIC_FACE }, { "Regular", B_REGULAR_FACE },
        { "Bold Italic", B_BOLD_FACE | B_ITALIC_FACE } };
    for (const auto& [style, face] : styles) {
        BFont styled;
        EXPECT_EQ(styled.SetFamilyAndStyle(nullptr, style), B_OK);
        EXPECT_EQ(styled.Face(), face);
    }
    const BFont& font = *be_plain_font;
    EXPECT_EQ(font.StringWidth("Tarvex"), font.StringWidth("Tar") + font.StringWidth("vex"));
    EXPECT_EQ(font.StringWidth("Tarvex", 3), font.StringWidth("Tar", 99));
    EXPECT_EQ(font.StringWidth(nullptr), 0);
    EXPECT_EQ(be_fixed_font->StringWidth("mmm"), be_fixed_font->StringWidth("iii"));
    EXPECT_GT(be_bold_font->StringWidth("hamburg"), font.StringWidth("hamburg"));
    for (const float size : { 8.0f, 30.0f }) {
        BFont sized;
        sized.SetSize(size);
        font_height height;
        sized.GetHeight(&height);
        EXPECT_GT(height.ascent, 0.7f * size);
        EXPECT_GT(height.descent, 0.1f * size);
        EXPECT_LT(height.ascent + height.descent, 1.6f * size);
    }
}

TEST(Utf8, EachBadByteIsOneReplacementCharacter)
{
    constexpr char32_t kBad = kReplacementCharacter;
    const std::tuple<const char*, std::string, std::u32string> rows[] = {
        { "all lengths", "z\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80", { 'z', 0xe4, 0x20ac, 0x1f600 } },
        { "the first and last of four bytes", "\xf0\x90\x80\x80\xf4\x8f\xbf\xbf",
            { 0x10000, 0x10ffff } },
        { "a following byte alone", "\x80z", { kBad, 'z' } },
        { "cut off", "a\xe2\x82", { 'a', kBad, kBad } },
        { "followed by a letter", "\xe2\x82z", { kBad, kBad, 'z' } },
        { "longer than needed", "\xc0\xaf\xe0\x80\xaf", { kBad, kBad, kBad, kBad, kBad } },
        { "half of a pair", "\xed\xa0\x80", { kBad, kBad, kBad } },
        { "beyond the last", "\xf4\x90\x80\x80", { kBad, kBad, kBad, kBad } },
        { "no lead byte", "\xff\xf8", { kBad, kBad } }
    };
    for (const auto& [name, text, expected] : rows) {
        std::u32string characters;
        for (const char *next = text.data(), *end = next + text.size(); next < end;)
            characters.push_back(NextCharacter(next, end));
        EXPECT_EQ(characters, expected) << name;
    }
}

} // namespace
