// A typeface in one size, as the display has it: measures and pictures of its glyphs, fetched from
// the display server once and kept for the life of the program. Any thread may use it.
#pragma once

#include "Font.h"
#include "Mutex.h"

#include <string>
#include <unordered_map>
#include <vector>

class QFont;

// What the display server is asked for.
struct FontRequest {
    std::string family; // empty: the desktop's own
    bool bold = false;
    bool italic = false;
    int32 pixels = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the default for a zero
    auto operator<=>(const FontRequest&) const = default;
};

// One character's picture, rows of alpha values padded to four bytes; all in pixels.
struct GlyphImage {
    int16 left = 0; // of the picture, from the pen
    int16 top = 0; // from the baseline, downwards
    uint16 width = 0;
    uint16 height = 0;
    int16 advance = 0; // how far the pen moves
    std::vector<uint8> alpha;
};

class FontFace {
public:
    static FontRequest Request(const BFont& font, float scale); // as for Of()
    // The font drawn at so many pixels a view unit. Null without a display or a BPicture.
    static FontFace* Of(const BFont& font, float scale);
    static float DisplayScale(); // pixels a view unit has on the main screen; 1 without a display

    // The picture stays where it is; a character that the font lacks has another font's, or that of
    // the missing character.
    const GlyphImage& GlyphOf(uint32 character) EXCLUDES(fLock);
    // Pixels that the pen moves over length bytes of UTF-8.
    int32 Width(const char* text, int32 length) EXCLUDES(fLock);
    font_height Height() const { return fHeight; } // in pixels

private:
    explicit FontFace(const FontRequest& request);

    const FontRequest fRequest;
    font_height fHeight {};
    Mutex fLock; // leaf: not held while the display server is asked
    std::unordered_map<uint32, GlyphImage> fGlyphs GUARDED_BY(fLock);
};

// Where glyph pictures and measures come from: the toolkit's fonts. What follows is called only on
// the display server's thread.

// Pixels of a view unit.
[[nodiscard]] float MainScreenScale();
// With letters as wide as FontFace measures them.
[[nodiscard]] QFont MakeFont(const FontRequest& request);
// In pixels.
[[nodiscard]] font_height MeasureFont(const FontRequest& request);
// One picture for each of the characters, in their order.
[[nodiscard]] std::vector<GlyphImage> RasterizeGlyphs(
    const FontRequest& request, const std::vector<uint32>& characters);
