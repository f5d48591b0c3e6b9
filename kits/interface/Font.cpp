#include "Font.h"

#include "drawing/FontFace.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

const char* StyleOf(uint16 face)
{
    const bool bold = (face & B_BOLD_FACE) != 0;
    if ((face & B_ITALIC_FACE) != 0)
        return bold ? "Bold Italic" : "Italic";
    return bold ? "Bold" : "Regular";
}

uint16 FaceOf(const std::string& style)
{
    // What a typeface calls its slanted style depends on its maker; here both words are one face.
    const auto has = [&style](const char* word) { return style.find(word) != std::string::npos; };
    const uint16 face =
        (has("Bold") ? B_BOLD_FACE : 0) | (has("Italic") || has("Oblique") ? B_ITALIC_FACE : 0);
    if (face == 0)
        return B_REGULAR_FACE;
    return face;
}

bool IsName(const char* name)
{
    // A longer one would come out of GetFamilyAndStyle() cut off, as another family's name.
    return name[0] != '\0' && strlen(name) <= static_cast<size_t>(B_FONT_FAMILY_LENGTH);
}

} // namespace

// Made at first use: fonts of other files' static objects are copies of the plain one.
struct SystemFonts {
    BFont plain { "Sans", "Regular", B_REGULAR_FACE, 12 };
    BFont bold { "Sans", "Bold", B_BOLD_FACE, 12 };
    BFont fixed { "Monospace", "Regular", B_REGULAR_FACE, 12 };

    static const SystemFonts& Get()
    {
        static const SystemFonts* const sFonts = new SystemFonts; // outlives every static object
        return *sFonts;
    }
};

const BFont* be_plain_font = &SystemFonts::Get().plain;
const BFont* be_bold_font = &SystemFonts::Get().bold;
const BFont* be_fixed_font = &SystemFonts::Get().fixed;

BFont::BFont() : BFont(SystemFonts::Get().plain) { }

BFont::BFont(const BFont* font) : BFont(font ? *font : SystemFonts::Get().plain) { }

BFont::BFont(const char* family, const char* style, uint16 face, float size)
    : fFamily(family), fStyle(style), fFace(face), fSize(size)
{
}

status_t BFont::SetFamilyAndStyle(const char* family, const char* style)
{
    if ((family && !IsName(family)) || (style && !IsName(style)))
        return B_BAD_VALUE;
    if (family)
        fFamily = family;
    if (style) {
        fStyle = style;
        fFace = FaceOf(fStyle);
    }
    return B_OK;
}

void BFont::GetFamilyAndStyle(font_family* family, font_style* style) const
{
    if (family)
        snprintf(*family, sizeof(*family), "%s", fFamily.c_str());
    if (style)
        snprintf(*style, sizeof(*style), "%s", fStyle.c_str());
}

void BFont::SetFace(uint16 face)
{
    fFace = face;
    fStyle = StyleOf(face);
}

void BFont::SetSize(float size)
{
    fSize = std::max(1.0f, size); // and 1 for what is no number
}

float BFont::StringWidth(const char* string) const
{
    return StringWidth(string, INT32_MAX);
}

float BFont::StringWidth(const char* string, int32 length) const
{
    if (!string)
        return 0;
    // Measured in the pixels that are drawn: letters move the pen by whole ones, so that at another
    // scale a line is not just larger.
    const float scale = FontFace::DisplayScale();
    FontFace* face = FontFace::Of(*this, scale);
    const size_t bytes = strnlen(string, std::max(length, 0));
    return !face ? 0 : face->Width(string, static_cast<int32>(bytes)) / scale;
}

void BFont::GetHeight(font_height* height) const
{
    const float scale = FontFace::DisplayScale();
    const FontFace* face = FontFace::Of(*this, scale);
    if (!face) {
        // Without a display: about what most typefaces have, so that a layout does not collapse.
        *height = { 0.8f * fSize, 0.2f * fSize, 0 };
        return;
    }
    const font_height pixels = face->Height();
    *height = { pixels.ascent / scale, pixels.descent / scale, pixels.leading / scale };
}
