#include "ui/TarvexApp.h"

#include <Screen.h>

#include <cstdio>
#include <cstdlib>

namespace {

// Asked before there is any window, so that the user learns what is missing.
bool HasScreen()
{
    if (BScreen(B_MAIN_SCREEN_ID).IsValid())
        return true;
    const char* display = getenv("DISPLAY");
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
