#include "drawing/FontFace.h"

#include "LeafLock.h"
#include "server/DisplayServer.h"
#include "TextCoding.h"

#include <QApplication>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <map>
#include <memory>

namespace {

constexpr int32 kMaxPixels = 1000; // larger ones would only exhaust memory

Mutex gFacesLock; // leaf
std::map<FontRequest, std::unique_ptr<FontFace>> gFaces GUARDED_BY(gFacesLock);

} // namespace

FontRequest FontFace::Request(const BFont& font, float scale)
{
    FontRequest request;
    // The plain font stands for whatever the desktop has as its own, not for a family.
    request.family = font.fFamily == be_plain_font->fFamily ? "" : font.fFamily;
    request.bold = (font.fFace & B_BOLD_FACE) != 0;
    request.italic = (font.fFace & B_ITALIC_FACE) != 0;
    request.pixels = std::lround(std::clamp<float>(font.fSize * scale, 1, kMaxPixels));
    return request;
}

FontFace* FontFace::Of(const BFont& font, float scale)
{
    const FontRequest request = Request(font, scale);
    {
        const LeafLock lock(gFacesLock);
        const auto found = gFaces.find(request);
        if (found != gFaces.end())
            return found->second.get();
    }
    if (!display::Serves())
        return nullptr;
    std::unique_ptr<FontFace> face(new FontFace(request));
    const LeafLock lock(gFacesLock); // where another thread was faster, its face stays
    return gFaces.emplace(request, std::move(face)).first->second.get();
}

float FontFace::DisplayScale()
{
    static std::atomic<float> sScale = 0; // 0: not asked yet
    if (sScale == 0)
        sScale = display::Call(MainScreenScale);
    return sScale != 0 ? sScale.load() : 1;
}

FontFace::FontFace(const FontRequest& request) : fRequest(request)
{
    // All of ASCII with one wait for the display server, instead of one for each letter.
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
    // Without the lock: two threads may draw the same glyph, and the first one's stays.
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

// --- The toolkit's side

namespace {

// The smallest rectangle around all pixels that are not transparent.
QRect InkOf(const QImage& image)
{
    QRect ink;
    for (int y = 0; y < image.height(); y++) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); x++) {
            if (qAlpha(row[x]) != 0)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

std::vector<uint8> AlphaOf(const QImage& image, const QRect& part)
{
    // Rows as RENDER wants them, padded to four bytes.
    const int stride = (part.width() + 3) / 4 * 4;
    std::vector<uint8> alpha(static_cast<size_t>(stride) * part.height());
    for (int y = 0; y < part.height(); y++) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(part.top() + y));
        for (int x = 0; x < part.width(); x++)
            alpha[y * stride + x] = static_cast<uint8>(qAlpha(row[part.left() + x]));
    }
    return alpha;
}

GlyphImage RasterizeGlyph(const QFont& font, const QFontMetricsF& metrics, uint32 character)
{
    const QString text = QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1);
    GlyphImage glyph;
    glyph.advance = static_cast<int16>(std::lround(metrics.horizontalAdvance(text)));
    // The measured rectangle may miss antialiased borders and what is drawn from another font.
    const int margin = 2 + static_cast<int>(metrics.height() / 4);
    const QRect area =
        metrics.boundingRect(text).toAlignedRect().adjusted(-margin, -margin, margin, margin);
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return glyph;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(font);
    painter.drawText(-area.topLeft(), text);
    painter.end();
    const QRect ink = InkOf(image);
    if (ink.isEmpty())
        return glyph;
    glyph.left = static_cast<int16>(area.left() + ink.left());
    glyph.top = static_cast<int16>(area.top() + ink.top());
    glyph.width = static_cast<uint16>(ink.width());
    glyph.height = static_cast<uint16>(ink.height());
    glyph.alpha = AlphaOf(image, ink);
    return glyph;
}

} // namespace

QFont MakeFont(const FontRequest& request)
{
    QFont font = QApplication::font();
    if (!request.family.empty())
        font.setFamily(QString::fromStdString(request.family));
    font.setPixelSize(request.pixels);
    font.setBold(request.bold);
    font.setItalic(request.italic);
    // Whole-pixel advances, so that the widths measured are the widths drawn.
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

float MainScreenScale()
{
    return static_cast<float>(qGuiApp->devicePixelRatio());
}

font_height MeasureFont(const FontRequest& request)
{
    const QFontMetricsF metrics(MakeFont(request));
    return { static_cast<float>(metrics.ascent()), static_cast<float>(metrics.descent()),
        static_cast<float>(metrics.leading()) };
}

std::vector<GlyphImage> RasterizeGlyphs(
    const FontRequest& request, const std::vector<uint32>& characters)
{
    const QFont font = MakeFont(request);
    const QFontMetricsF metrics(font);
    std::vector<GlyphImage> glyphs;
    glyphs.reserve(characters.size());
    for (const uint32 character : characters)
        glyphs.push_back(RasterizeGlyph(font, metrics, character));
    return glyphs;
}
