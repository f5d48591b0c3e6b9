#include "toolkit/PanelColor.h"

#include <InterfaceDefs.h>

#include <algorithm>

rgb_color LibOnPanel(rgb_color color)
{
    constexpr int kDark = 3 * 128;
    constexpr int kBrighter = 110;
    const rgb_color panel = ui_color(B_PANEL_BACKGROUND_COLOR);
    if (panel.red + panel.green + panel.blue >= kDark)
        return color;
    const auto brighter = [](uint8 part) { return uint8(std::min(part + kBrighter, 255)); };
    return { brighter(color.red), brighter(color.green), brighter(color.blue), color.alpha };
}
