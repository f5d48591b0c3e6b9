// The pointer's picture over the program's windows.
#pragma once

// The kit's cursor hook: shows CurrentCursor() on the display server, some time soon. From any
// thread.
void CursorChanged();
