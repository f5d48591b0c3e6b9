#include "Picture.h"

#include "drawing/FontFace.h"
#include "drawing/PictureRecord.h"
#include "drawing/SvgDevice.h"
#include "OwnLibrary.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "WholeFile.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPageSize>
#include <QPaintEngine>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>
#include <strings.h>

namespace {

constexpr int kUnitsPerInch = 96;
constexpr double kPointsPerUnit = 72.0 / kUnitsPerInch;

enum class Format { kNone, kSvg, kPng, kPdf };

Format FormatOf(const std::string& path)
{
    const struct {
        const char* ending;
        Format format;
    } rows[] = { { ".svg", Format::kSvg }, { ".png", Format::kPng }, { ".pdf", Format::kPdf } };
    // A name without a dot has the empty ending, at its end.
    const size_t dot = std::min(path.rfind('.'), path.size());
    for (const auto& row : rows) {
        if (strcasecmp(path.c_str() + dot, row.ending) == 0)
            return row.format;
    }
    return Format::kNone;
}

// Characters that no XML file may hold; a line that others wrote can have them.
QString Printable(const std::string& text)
{
    QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& character : result) {
        if (character.category() == QChar::Other_Control || character.unicode() >= 0xfffe)
            character = QChar::ReplacementCharacter;
    }
    return result;
}

// Draws a picture's steps. A view's point is a pixel, and this is its middle.
class Replay {
public:
    explicit Replay(QPainter& painter) : fPainter(painter) { }
    void operator()(const DrawnShape& shape);
    void operator()(const DrawnString& string);
    void operator()(const DrawnBitmap& bitmap);

private:
    static QPointF Middle(BPoint point) { return QPointF(point.x + 0.5, point.y + 0.5); }

    QPainter& fPainter;
};

// From the first edge to behind the last pixel, in any order of the corners. A bar that is thinner
// than a pixel keeps its order.
QRectF AreaOf(BPoint from, BPoint to)
{
    const auto [left, right] =
        from.x > to.x + 1 ? std::pair(to.x, from.x) : std::pair(from.x, to.x);
    const auto [top, bottom] =
        from.y > to.y + 1 ? std::pair(to.y, from.y) : std::pair(from.y, to.y);
    return QRectF(QPointF(left, top), QPointF(right + 1, bottom + 1));
}

void Replay::operator()(const DrawnShape& shape)
{
    const auto& [a, b, c] = shape.points;
    const bool isFilled = shape.ink == DrawnShape::Ink::kFill;
    const QColor color = ToQColor(shape.color);
    QPen pen(color, std::max(shape.penSize, 1.0f), Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    fPainter.setPen(isFilled ? QPen(Qt::NoPen) : pen);
    fPainter.setBrush(isFilled ? QBrush(color) : QBrush(Qt::NoBrush));
    const bool isUpright = shape.form == DrawnShape::Form::kBox
        || (shape.form == DrawnShape::Form::kLine && (a.x == b.x || a.y == b.y));
    fPainter.setRenderHint(QPainter::Antialiasing, !isUpright); // whose edges stay sharp
    const QRectF area = isFilled ? AreaOf(a, b) : QRectF(Middle(a), Middle(b)).normalized();
    switch (shape.form) {
        case DrawnShape::Form::kLine: fPainter.drawLine(Middle(a), Middle(b)); break;
        case DrawnShape::Form::kBox: fPainter.drawRect(area); break;
        case DrawnShape::Form::kEllipse: fPainter.drawEllipse(area); break;
        case DrawnShape::Form::kTriangle:
            fPainter.drawPolygon(QPolygonF({ Middle(a), Middle(b), Middle(c) }));
            break;
    }
}

// Letters are finer than on a screen, where each has a width of whole pixels. A little space
// between them makes up for it, so that the text ends where the program that measured it takes it
// to end.
void Replay::operator()(const DrawnString& string)
{
    const QString text = Printable(string.text);
    const FontRequest request = FontFace::Request(string.font, 1);
    QFont font = MakeFont(request);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferDefault);
    if (fPainter.paintEngine()->type() == QPaintEngine::SVG && request.family.empty())
        font.setFamily("sans-serif"); // the desktop's own is not that of whoever looks at it
    const double natural = QFontMetricsF(font, fPainter.device()).horizontalAdvance(text);
    if (natural > 0)
        font.setLetterSpacing(
            QFont::PercentageSpacing, 100 * static_cast<double>(string.width) / natural);
    fPainter.setFont(font);
    fPainter.setPen(ToQColor(string.color));
    fPainter.drawText(QPointF(string.pen.x, string.pen.y + 1), text); // stands on the pixel row
}

void Replay::operator()(const DrawnBitmap& bitmap)
{
    QImage image(bitmap.width, bitmap.height, QImage::Format_ARGB32);
    for (int32 y = 0; y < bitmap.height; y++) {
        for (int32 x = 0; x < bitmap.width; x++) {
            const rgb_color color =
                bitmap.pixels[static_cast<size_t>(y) * static_cast<size_t>(bitmap.width)
                    + static_cast<size_t>(x)];
            image.setPixelColor(x, y, QColor(color.red, color.green, color.blue, color.alpha));
        }
    }
    fPainter.drawImage(
        AreaOf(bitmap.destination.LeftTop(), bitmap.destination.RightBottom()), image);
}

// Paints the picture's area on white, from the device's left top, in so many of its pixels a unit.
bool Paint(QPaintDevice& device, const BPicture& picture, BRect area, double scale)
{
    QPainter painter(&device);
    painter.scale(scale, scale);
    painter.translate(static_cast<double>(-area.left), static_cast<double>(-area.top));
    painter.fillRect(AreaOf(area.LeftTop(), area.RightBottom()), Qt::white);
    Replay replay(painter);
    for (const PictureRecord::Step& step : picture.Record().Steps())
        std::visit(replay, step);
    return painter.end();
}

bool PaintSvg(QBuffer& file, const BPicture& picture, BRect area, const QString& title)
{
    const auto make =
        OwnFunction<decltype(&tarvex_make_svg_device)>("svg", "tarvex_make_svg_device");
    if (!make)
        return false;
    const QSizeF size = AreaOf(area.LeftTop(), area.RightBottom()).size();
    const std::unique_ptr<QPaintDevice> svg(make(file, size, kUnitsPerInch, title));
    return Paint(*svg, picture, area, 1);
}

bool PaintPng(QBuffer& file, const BPicture& picture, BRect area)
{
    constexpr int kScale = 2;
    constexpr double kInchesPerMeter = 1000 / 25.4;
    const QSize size = AreaOf(area.LeftTop(), area.RightBottom()).size().toSize();
    QImage image(size * kScale, QImage::Format_RGB32); // null where there is no memory for it
    image.setDotsPerMeterX(static_cast<int>(std::lround(kUnitsPerInch * kScale * kInchesPerMeter)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    return !image.isNull() && Paint(image, picture, area, kScale) && image.save(&file, "PNG");
}

bool PaintPdf(QBuffer& file, const BPicture& picture, BRect area, const QString& title)
{
    // Qt places things on whole dots of the page: rounding then is a hundredth of a millimetre.
    constexpr int kResolution = 1200;
    const QSizeF size = AreaOf(area.LeftTop(), area.RightBottom()).size() * kPointsPerUnit;
    QPdfWriter pdf(&file);
    pdf.setTitle(title);
    pdf.setResolution(kResolution);
    pdf.setPageSize(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch));
    pdf.setPageMargins(QMarginsF());
    return Paint(pdf, picture, area, static_cast<double>(kResolution) / kUnitsPerInch);
}

bool PaintInto(QBuffer& file, Format format, const BPicture& picture, BRect area, const char* title)
{
    const QString name = Printable(title);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    switch (format) {
        case Format::kSvg: return PaintSvg(file, picture, area, name);
        case Format::kPng: return PaintPng(file, picture, area);
        default: return PaintPdf(file, picture, area, name);
    }
}

} // namespace

BPicture::BPicture() : fRecord(std::make_unique<PictureRecord>())
{
    static_cast<void>(display::StartForPictures()); // without it WritePicture() fails
}

BPicture::~BPicture() = default;

std::string WhyNoPicture(const char* path)
{
    return FormatOf(path) == Format::kNone ? "a picture's name ends in .svg, .png or .pdf" : "";
}

std::string WritePicture(const char* path, const BPicture& picture, BRect area, const char* title)
{
    if (std::string reason = WhyNoPicture(path); !reason.empty())
        return reason;
    WholeFile file(path);
    FILE* stream = file.Stream();
    if (!stream)
        return file.Error();
    QBuffer buffer;
    const bool isPainted =
        display::Call([&] { return PaintInto(buffer, FormatOf(path), picture, area, title); });
    if (!isPainted)
        return "the picture could not be drawn";
    fwrite(buffer.data().constData(), 1, static_cast<size_t>(buffer.size()), stream);
    return file.Commit() ? "" : file.Error(); // which also knows of a failed fwrite()
}
