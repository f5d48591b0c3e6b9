// The typeface that text is drawn and measured with. A BFont is a value: family, style and size.
// Only measuring needs the display; everything else works without one.
#pragma once

#include "SupportDefs.h"

#include <string>

constexpr int32 B_FONT_FAMILY_LENGTH = 63;
constexpr int32 B_FONT_STYLE_LENGTH = 63;

using font_family = char[B_FONT_FAMILY_LENGTH + 1];
using font_style = char[B_FONT_STYLE_LENGTH + 1];

// Faces; they may be added up.
enum {
    B_ITALIC_FACE = 0x0001,
    B_UNDERSCORE_FACE = 0x0002,
    B_NEGATIVE_FACE = 0x0004,
    B_OUTLINED_FACE = 0x0008,
    B_STRIKEOUT_FACE = 0x0010,
    B_BOLD_FACE = 0x0020,
    B_REGULAR_FACE = 0x0040,
};

// Which properties BView::SetFont() takes over.
enum {
    B_FONT_FAMILY_AND_STYLE = 0x0001,
    B_FONT_SIZE = 0x0002,
    B_FONT_FACE = 0x0020,
    B_FONT_ALL = 0x00ff,
};

// A line of text needs ascent above its baseline and descent below it; leading is the free space
// to the next line. In view units.
struct font_height {
    float ascent;
    float descent;
    float leading;
};

// What DrawString() adds to the width of each blank, and of each other character.
struct escapement_delta {
    float nonspace;
    float space;
};

class BFont {
public:
    BFont(); // be_plain_font
    BFont(const BFont& font) = default;
    explicit BFont(const BFont* font); // be_plain_font for null
    BFont& operator=(const BFont& font) = default;

    // family and style: null keeps the present one. A family that is not installed is drawn with
    // the nearest one that is. B_BAD_VALUE, and nothing changed, where a name is empty or longer
    // than B_FONT_FAMILY_LENGTH bytes.
    status_t SetFamilyAndStyle(const char* family, const char* style);
    void GetFamilyAndStyle(font_family* family, font_style* style) const; // null: not asked for
    void SetFace(uint16 face); // also sets the style's name; only bold and italic are drawn
    uint16 Face() const { return fFace; }
    // Height of the type in view units, a whole number once drawn; below 1 becomes 1.
    void SetSize(float size);
    float Size() const { return fSize; }

    // Width of UTF-8 text in view units, as BView::DrawString() draws it; bytes that are no
    // UTF-8 count as the replacement character. 0 for null, and without a display unless there
    // has been a BPicture.
    float StringWidth(const char* string) const;
    float StringWidth(const char* string, int32 length) const; // of the first length bytes
    // Without a display: the size split in the usual proportion.
    void GetHeight(font_height* height) const;

    bool operator==(const BFont& font) const = default;

private:
    friend class FontFace;
    BFont(const char* family, const char* style, uint16 face, float size);
    friend struct SystemFonts;

    std::string fFamily;
    std::string fStyle;
    uint16 fFace;
    float fSize;
};

// 12 pixels high: the desktop's own typeface plain and bold, and one with letters of equal width.
extern const BFont* be_plain_font;
extern const BFont* be_bold_font;
extern const BFont* be_fixed_font;
