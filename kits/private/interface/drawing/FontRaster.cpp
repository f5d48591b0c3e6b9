#include "drawing/FontRaster.h"

#include <algorithm>
#include <cmath>
#include <QApplication>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

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
    painter.setPen(Qt::black);
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
    if (!request.family.empty()) {
        font.setFamily(QString::fromStdString(request.family));
        font.setStyleHint(request.fixed ? QFont::Monospace : QFont::AnyStyle);
    }
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
