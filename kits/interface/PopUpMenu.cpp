#include "PopUpMenu.h"

#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "server/ViewWidget.h"
#include "server/WindowWidget.h"
#include "Window.h"

#include <QMenu>

BPopUpMenu::~BPopUpMenu()
{
    Leave();
}

void BPopUpMenu::Join(BWindow* window)
{
    if (fMenuWindow)
        return;
    MenuAttached(window);
    display::Call([this, window] {
        auto* menu = new QMenu(window->fPeer->widget);
        UseDesktopColors(*menu);
        fMenuPeer->widget = menu;
        FillWidget();
    });
}

void BPopUpMenu::Leave()
{
    // A field's menu is the field's, down to its widget.
    if (!fMenuWindow || fMenuPeer->field)
        return;
    display::Call([this] { delete fMenuPeer->widget; });
    MenuDetached();
}

void BPopUpMenu::Open(BPoint where)
{
    if (!fMenuWindow || fMenuPeer->field)
        return;
    display::Call([this, where] {
        static_cast<QMenu*>(fMenuPeer->widget)->popup(QPoint(qRound(where.x), qRound(where.y)));
    });
}
