#include "ui/TarvexApp.h"

#include <Screen.h>

#include <cstdio>
#include <cstdlib>

namespace {

// Asked before there is any window, so that the user learns what is missing.
bool HasScreen()
{
    const BScreen screen(B_MAIN_SCREEN_ID);
    const char* display = getenv("DISPLAY");
    if (screen.IsValid()) {
        if (screen.ColorSpace() != B_CMAP8)
            return true;
        fprintf(stderr, "The display <%s> has 8 bits a pixel: windows need 15 at least\n", display);
        return false;
    }
    if (display && display[0])
        fprintf(stderr, "Cannot open display <%s>\n", display);
    else
        fprintf(stderr, "No display: <DISPLAY> is not set\n");
    return false;
}

} // namespace

int main()
{
    if (!HasScreen())
        return 1;
    TarvexApp* app = new TarvexApp;
    app->Run();
    delete app;
    return 0;
}
