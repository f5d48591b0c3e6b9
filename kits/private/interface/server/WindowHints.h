// What Qt does not tell the window manager about a window. Calls on the display server only.
#pragma once

#include "SupportDefs.h"

class QWidget;

// What the user may do with the window, by its B_NOT_... flags.
void SetWindowFunctions(QWidget& window, uint32 flags);
// workspaces: bits, or B_ALL_WORKSPACES; the lowest one counts. B_CURRENT_WORKSPACE does nothing.
void SetWindowWorkspace(QWidget& window, uint32 workspaces);
