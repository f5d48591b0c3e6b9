#include "server/Convert.h"

#include "Font.h"

#include <QGuiApplication>

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
