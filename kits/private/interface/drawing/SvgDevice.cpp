#include "SvgDevice.h"

#include <QSvgGenerator>

QPaintDevice* tarvex_make_svg_device(
    QIODevice& file, const QSizeF& size, int unitsPerInch, const QString& title)
{
    auto* svg = new QSvgGenerator;
    svg->setOutputDevice(&file);
    svg->setResolution(unitsPerInch);
    svg->setSize(size.toSize());
    svg->setViewBox(QRectF(QPointF(), size));
    svg->setTitle(title.toHtmlEscaped());
    svg->setDescription(QString());
    return svg;
}
