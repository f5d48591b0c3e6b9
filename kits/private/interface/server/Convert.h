// The kit's values as Qt's and back.
#pragma once

#include "GraphicsDefs.h"
#include "InterfaceDefs.h"
#include "Point.h"
#include "Rect.h"

#include <QColor>
#include <QFont>
#include <QKeySequence>
#include <QPointF>
#include <QRect>
#include <QString>

class BFont;

QColor ToQColor(rgb_color color);
rgb_color FromQColor(const QColor& color);
QRect ToQRect(BRect rect); // each edge rounded: (0, 0, 9, 9) is 10 pixels wide; never below 0
BRect FromQRect(const QRect& rect);
inline BPoint FromQPoint(const QPointF& point)
{
    return BPoint(static_cast<float>(point.x()), static_cast<float>(point.y()));
}
QFont ToQFont(const BFont& font);
Qt::Alignment ToQAlignment(alignment side); // and in the middle of the height
// A label for widgets that take "&" as the mark of a mnemonic.
QString PlainLabel(const char* label);
// The keys of a shortcut: the command key with key and modifiers.
QKeySequence ShortcutKeys(uint32 key, uint32 modifiers);
