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

} // namespace

rgb_color ui_color(color_which which)
{
    // A program without a display, as one that only writes pictures, may still make views.
    if (!display::Start())
        return RoleOf(which) == QPalette::WindowText ? black_color : white_color;
    return display::Call([which] {
        return FromQColor(QGuiApplication::palette().color(QPalette::Active, RoleOf(which)));
    });
}

void prepare_windows()
{
    display::Prepare();
}
