#include "server/LostWindows.h"

#include "server/WindowWidget.h"

#include <QApplication>

#include <xcb/xcb.h>

LostWindows::LostWindows()
{
    qApp->installNativeEventFilter(this);
}

// Windows that Qt itself destroys are no widget's any more when their event comes.
bool LostWindows::nativeEventFilter(const QByteArray&, void* event, qintptr*)
{
    const auto* note = static_cast<const xcb_destroy_notify_event_t*>(event);
    if ((note->response_type & 0x7f) != XCB_DESTROY_NOTIFY)
        return false;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = dynamic_cast<WindowWidget*>(widget);
        if (window && window->internalWinId() == note->window)
            window->Lost();
    }
    return false;
}
