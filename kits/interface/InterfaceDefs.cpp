#include "InterfaceDefs.h"

#include "server/Convert.h"
#include "server/DisplayServer.h"

#include <QGuiApplication>
#include <QPalette>

namespace {

QPalette::ColorRole RoleOf(color_which which)
{
    switch (which) {
        case B_MENU_SELECTED_BACKGROUND_COLOR: return QPalette::Highlight;
        case B_MENU_ITEM_TEXT_COLOR:
        case B_PANEL_TEXT_COLOR: return QPalette::WindowText;
        case B_DOCUMENT_BACKGROUND_COLOR: return QPalette::Base;
        default: return QPalette::Window;
    }
}

// For programs without a display, as one that only writes pictures.
rgb_color UsualColor(color_which which)
{
    const QPalette::ColorRole role = RoleOf(which);
    if (role == QPalette::WindowText)
        return black_color;
    if (role == QPalette::Base)
        return white_color;
    return role == QPalette::Highlight ? rgb_color { 115, 120, 184 } : rgb_color { 216, 216, 216 };
}

} // namespace

rgb_color ui_color(color_which which)
{
    if (!display::Start())
        return UsualColor(which);
    return display::Call([which] {
        return FromQColor(QGuiApplication::palette().color(QPalette::Active, RoleOf(which)));
    });
}

void prepare_windows()
{
    display::Prepare();
}
