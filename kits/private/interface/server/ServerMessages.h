// Codes of the messages with which the display server reports to windows and views, beside the
// platform's own of AppDefs.h.
#pragma once

#include "AppDefs.h"

enum {
    kMsgWidgetChanged = '_WGC', // to a view: the user changed its widget; fields are the control's
    kMsgFocused = '_FOC', // to a view: it has the keyboard now
    kMsgShortcut = '_SHC', // to a window: int32 "shortcut"
};
