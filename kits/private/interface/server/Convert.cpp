#include "server/Convert.h"

#include "AppDefs.h"
#include "Font.h"
#include "InterfaceDefs.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cctype>
#include <cmath>

QColor ToQColor(rgb_color color)
{
    return QColor(color.red, color.green, color.blue);
}

rgb_color FromQColor(const QColor& color)
{
    return { static_cast<uint8>(color.red()), static_cast<uint8>(color.green()),
        static_cast<uint8>(color.blue()), 255 };
}

QRect ToQRect(BRect rect)
{
    // Edges are rounded and not sizes: rectangles that meet still do.
    const int left = static_cast<int>(std::lround(rect.left));
    const int top = static_cast<int>(std::lround(rect.top));
    const int width = static_cast<int>(std::lround(rect.right)) - left + 1;
    const int height = static_cast<int>(std::lround(rect.bottom)) - top + 1;
    return QRect(left, top, std::max(width, 0), std::max(height, 0));
}

BRect FromQRect(const QRect& rect)
{
    return BRect(static_cast<float>(rect.left()), static_cast<float>(rect.top()),
        static_cast<float>(rect.right()), static_cast<float>(rect.bottom()));
}

QFont ToQFont(const BFont& font)
{
    font_family family;
    font_style style;
    font.GetFamilyAndStyle(&family, &style);
    QFont result(QString::fromUtf8(family));
    result.setPixelSize(std::max(static_cast<int>(std::lround(font.Size())), 1));
    result.setBold((font.Face() & B_BOLD_FACE) != 0);
    result.setItalic((font.Face() & B_ITALIC_FACE) != 0);
    return result;
}

Qt::Alignment ToQAlignment(alignment side)
{
    if (side == B_ALIGN_RIGHT)
        return Qt::AlignRight | Qt::AlignVCenter;
    return (side == B_ALIGN_CENTER ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter;
}

QString PlainLabel(const char* label)
{
    return QString::fromUtf8(label).replace('&', "&&");
}

QKeySequence ShortcutKeys(uint32 key, uint32 modifiers)
{
    // The command key is Ctrl on this keyboard, and so the control key is Alt.
    Qt::KeyboardModifiers held = Qt::ControlModifier;
    if (modifiers & B_SHIFT_KEY)
        held |= Qt::ShiftModifier;
    if (modifiers & B_CONTROL_KEY)
        held |= Qt::AltModifier;
    if (modifiers & B_OPTION_KEY)
        held |= Qt::MetaModifier;
    const int code = key < 0x80 ? toupper(static_cast<int>(key)) : static_cast<int>(key);
    return QKeySequence(QKeyCombination(held, static_cast<Qt::Key>(code)));
}

// --- Input

namespace {

struct KeyByte {
    int key;
    char byte;
};

// Keys whose text Qt leaves empty or makes something else of. Shift and Tab are a key of their own
// there; here the modifiers tell it.
constexpr KeyByte kKeyBytes[] = {
    { Qt::Key_Return, B_RETURN },
    { Qt::Key_Enter, B_ENTER },
    { Qt::Key_Backspace, B_BACKSPACE },
    { Qt::Key_Tab, B_TAB },
    { Qt::Key_Backtab, B_TAB },
    { Qt::Key_Escape, B_ESCAPE },
    { Qt::Key_Delete, B_DELETE },
    { Qt::Key_Insert, B_INSERT },
    { Qt::Key_Home, B_HOME },
    { Qt::Key_End, B_END },
    { Qt::Key_PageUp, B_PAGE_UP },
    { Qt::Key_PageDown, B_PAGE_DOWN },
    { Qt::Key_Left, B_LEFT_ARROW },
    { Qt::Key_Right, B_RIGHT_ARROW },
    { Qt::Key_Up, B_UP_ARROW },
    { Qt::Key_Down, B_DOWN_ARROW },
};

bool IsFunctionKey(int key)
{
    return key >= Qt::Key_F1 && key <= Qt::Key_F12;
}

QByteArray BytesOf(const QKeyEvent& event)
{
    for (const KeyByte& row : kKeyBytes) {
        if (row.key == event.key())
            return QByteArray(1, row.byte);
    }
    if (IsFunctionKey(event.key()))
        return QByteArray(1, B_FUNCTION_KEY);
    // With Ctrl the text would be a control character.
    if ((event.modifiers() & Qt::ControlModifier) && event.key() < 0x80)
        return QByteArray(1, QChar(event.key()).toLower().toLatin1());
    return event.text().toUtf8();
}

} // namespace

int32 ButtonBits(Qt::MouseButtons buttons)
{
    int32 bits = 0;
    if (buttons & Qt::LeftButton)
        bits |= B_PRIMARY_MOUSE_BUTTON;
    if (buttons & Qt::RightButton)
        bits |= B_SECONDARY_MOUSE_BUTTON;
    if (buttons & Qt::MiddleButton)
        bits |= B_TERTIARY_MOUSE_BUTTON;
    return bits;
}

int32 ModifierBits(Qt::KeyboardModifiers modifiers)
{
    int32 bits = 0;
    if (modifiers & Qt::ShiftModifier)
        bits |= B_SHIFT_KEY;
    if (modifiers & Qt::ControlModifier)
        bits |= B_COMMAND_KEY;
    if (modifiers & Qt::AltModifier)
        bits |= B_CONTROL_KEY;
    if (modifiers & Qt::MetaModifier)
        bits |= B_OPTION_KEY;
    return bits;
}

BMessage MouseMessage(uint32 what, const QMouseEvent& event, int32 clicks)
{
    BMessage message(what);
    message.AddInt64("when", system_time());
    message.AddPoint("where", FromQPoint(event.position()));
    message.AddPoint("screen_where", FromQPoint(event.globalPosition()));
    message.AddInt32("buttons", ButtonBits(event.buttons()));
    message.AddInt32("modifiers", ModifierBits(event.modifiers()));
    if (what == B_MOUSE_DOWN)
        message.AddInt32("clicks", clicks);
    return message;
}

BMessage MovedMessage(BPoint where, BPoint screenWhere, int32 buttons, int32 transit)
{
    BMessage message(B_MOUSE_MOVED);
    message.AddInt64("when", system_time());
    message.AddPoint("where", where);
    message.AddPoint("screen_where", screenWhere);
    message.AddInt32("buttons", buttons);
    message.AddInt32("be:transit", transit);
    return message;
}

BMessage WheelMessage(const QWheelEvent& event)
{
    // Qt counts in eighths of a degree, 15 degrees to a notch, and upwards.
    constexpr float kUnitsPerNotch = 120;
    BMessage message(B_MOUSE_WHEEL_CHANGED);
    message.AddInt64("when", system_time());
    message.AddFloat(
        "be:wheel_delta_x", -static_cast<float>(event.angleDelta().x()) / kUnitsPerNotch);
    message.AddFloat(
        "be:wheel_delta_y", -static_cast<float>(event.angleDelta().y()) / kUnitsPerNotch);
    return message;
}

BMessage KeyMessage(const QKeyEvent& event)
{
    BMessage message(B_KEY_DOWN);
    message.AddInt64("when", system_time());
    message.AddInt32("modifiers", ModifierBits(event.modifiers()));
    // The function keys have one byte in common, so only they are told apart by number.
    message.AddInt32("key", IsFunctionKey(event.key()) ? event.key() - Qt::Key_F1 + B_F1_KEY : 0);
    const QByteArray bytes = BytesOf(event);
    if (!bytes.isEmpty()) {
        message.AddInt32("raw_char", static_cast<uint8>(bytes[0]));
        message.AddString("bytes", bytes.constData());
    }
    return message;
}
