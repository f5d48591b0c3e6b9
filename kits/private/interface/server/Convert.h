// The kit's values as Qt's and back, and the platform's messages for Qt's input events.
#pragma once

#include "GraphicsDefs.h"
#include "InterfaceDefs.h"
#include "Message.h"
#include "Point.h"
#include "Rect.h"

#include <QColor>
#include <QFont>
#include <QKeySequence>
#include <QPointF>
#include <QRect>
#include <QString>

class BFont;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

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

int32 ButtonBits(Qt::MouseButtons buttons); // B_PRIMARY_MOUSE_BUTTON and so on
int32 ModifierBits(Qt::KeyboardModifiers modifiers); // B_SHIFT_KEY and so on

// B_MOUSE_DOWN, B_MOUSE_UP, B_MOUSE_MOVED: "when", "where" (in pixels of the widget from its left
// top), "screen_where", "buttons", "modifiers"; when pressed "clicks"; when moved "be:transit".
BMessage MouseMessage(uint32 what, const QMouseEvent& event, int32 clicks = 1);
BMessage MovedMessage(BPoint where, BPoint screenWhere, int32 buttons, int32 transit);
// B_MOUSE_WHEEL_CHANGED: "be:wheel_delta_x" and "be:wheel_delta_y" (float) in notches, positive
// towards right and bottom.
BMessage WheelMessage(const QWheelEvent& event);
// B_KEY_DOWN: "when", "key", "raw_char", "modifiers", "bytes" (string, one character or a byte of
// InterfaceDefs.h). Without "bytes" it is a key of no use, such as Shift alone.
BMessage KeyMessage(const QKeyEvent& event);
