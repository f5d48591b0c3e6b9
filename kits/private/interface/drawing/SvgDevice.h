// In libtarvex-svg.so, which stands on Qt's part for SVG: few runs of a program write one.
#pragma once

class QIODevice;
class QPaintDevice;
class QSizeF;
class QString;

// A device that writes to the file, open, what is painted on it, as SVG of that size and title;
// units of so many an inch. The caller's own.
extern "C" QPaintDevice* tarvex_make_svg_device(
    QIODevice& file, const QSizeF& size, int unitsPerInch, const QString& title);
