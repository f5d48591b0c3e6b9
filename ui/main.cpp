#include "ui/TarvexApp.h"

#include <Screen.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char kUsage[] =
    "Usage: tarvex [FILE...]\n"
    "       tarvex -scmp\n"
    "       tarvex -help FILE\n"
    "\n"
    "Opens the window in which groups of tests are chosen and run, and shows the machines of\n"
    "results files in the comparison. -scmp lets the comparison be saved as Tarvex.compare;\n"
    "-help adds a file of help texts to the program. tarvex-run does the same tests without\n"
    "windows.\n";

// What is asked for on standard output, or null. Behind "-help" every argument is a file.
const char* AnswerTo(int argc, char** argv)
{
    if (argc > 1 && strcmp(argv[1], "-help") == 0)
        return nullptr;
    for (int i = 1; i < argc; i++) {
        if (strcmp(argv[i], "--help") == 0)
            return kUsage;
        if (strcmp(argv[i], "--version") == 0)
            return "tarvex " TARVEX_VERSION "\n";
    }
    return nullptr;
}

int Print(const char* text)
{
    // Sent on at once: a full disk shows only then.
    if (fputs(text, stdout) >= 0 && fflush(stdout) == 0)
        return 0;
    fprintf(stderr, "Error writing <standard output>\n");
    return 1;
}

// Asked before there is any window, so that the user learns what is missing.
bool HasScreen()
{
    const BScreen screen(B_MAIN_SCREEN_ID);
    const char* display = getenv("DISPLAY");
    if (screen.IsValid()) {
        if (screen.ColorSpace() != B_CMAP8)
            return true;
        fprintf(stderr,
            "The display <%s> has 8 bits a pixel: windows need 15 at least.\n"
            "Set it to 24, or measure it with tarvex-run, which needs no controls\n",
            display);
        return false;
    }
    const char* wayland = getenv("WAYLAND_DISPLAY");
    if (display && display[0])
        fprintf(stderr, "Cannot open display <%s>\n", display);
    else if (wayland && wayland[0])
        fprintf(stderr, "No display: <DISPLAY> is not set; a Wayland session needs Xwayland\n");
    else
        fprintf(stderr, "No display: <DISPLAY> is not set\n");
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    // Before the screen is looked at: these answers need none.
    if (const char* answer = AnswerTo(argc, argv))
        return Print(answer);
    if (!HasScreen())
        return 1;
    TarvexApp* app = new TarvexApp;
    app->Run();
    delete app;
    return 0;
}
