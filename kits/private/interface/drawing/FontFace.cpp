#include "drawing/FontFace.h"

#include "drawing/FontRaster.h"
#include "LeafLock.h"
#include "server/DisplayServer.h"
#include "TextCoding.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <map>
#include <memory>

namespace {

constexpr int32 kMaxPixels = 1000; // larger ones would only exhaust memory

Mutex sFacesLock; // leaf
std::map<FontRequest, std::unique_ptr<FontFace>> sFaces GUARDED_BY(sFacesLock);

} // namespace

FontRequest FontFace::Request(const BFont& font, float scale)
{
    FontRequest request;
    request.family = font.fFamily == be_plain_font->fFamily ? "" : font.fFamily;
    request.bold = (font.fFace & B_BOLD_FACE) != 0;
    request.italic = (font.fFace & B_ITALIC_FACE) != 0;
    request.fixed = font.fFamily == be_fixed_font->fFamily;
    request.pixels = std::lround(std::clamp<float>(font.fSize * scale, 1, kMaxPixels));
    return request;
}

FontFace* FontFace::Of(const BFont& font, float scale)
{
    const FontRequest request = Request(font, scale);
    {
        const LeafLock lock(sFacesLock);
        const auto found = sFaces.find(request);
        if (found != sFaces.end())
            return found->second.get();
    }
    if (!display::Serves())
        return nullptr;
    std::unique_ptr<FontFace> face(new FontFace(request));
    const LeafLock lock(sFacesLock); // where another thread was faster, its face stays
    return sFaces.emplace(request, std::move(face)).first->second.get();
}

float FontFace::DisplayScale()
{
    static std::atomic<float> scale = 0; // 0: not asked yet
    if (scale == 0)
        scale = display::Call(MainScreenScale);
    return scale != 0 ? scale.load() : 1;
}

FontFace::FontFace(const FontRequest& request) : fRequest(request)
{
    constexpr uint32 kFirst = ' ';
    constexpr uint32 kLast = '~';
    std::vector<uint32> characters;
    for (uint32 character = kFirst; character <= kLast; character++)
        characters.push_back(character);
    std::vector<GlyphImage> glyphs;
    display::Call([&] {
        fHeight = MeasureFont(fRequest);
        glyphs = RasterizeGlyphs(fRequest, characters);
    });
    for (size_t i = 0; i < glyphs.size(); i++)
        fGlyphs.emplace(characters[i], std::move(glyphs[i]));
}

const GlyphImage& FontFace::GlyphOf(uint32 character)
{
    {
        const LeafLock lock(fLock);
        const auto found = fGlyphs.find(character);
        if (found != fGlyphs.end())
            return found->second;
    }
    std::vector<GlyphImage> glyphs;
    display::Call([&] { glyphs = RasterizeGlyphs(fRequest, { character }); });
    const LeafLock lock(fLock);
    // Nothing comes back once the display server has ended.
    return fGlyphs.emplace(character, glyphs.empty() ? GlyphImage() : std::move(glyphs.front()))
        .first->second;
}

int32 FontFace::Width(const char* text, int32 length)
{
    int32 width = 0;
    for (const char* end = text + length; text < end;)
        width += GlyphOf(NextCharacter(text, end)).advance;
    return width;
}
