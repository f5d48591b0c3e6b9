#include "foundation/Utf8.h"
#include "ui/TarvexApp.h"

#include <InterfaceDefs.h>
#include <Screen.h>
#include <SingleLaunch.h>

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
    "files in the comparison: results files, the packages that \"Save...\" makes, JSON of\n"
    "tarvex-run, and folders of these. Where Tarvex runs on the display already, it opens them.\n"
    "-scmp lets the comparison be saved as Tarvex.compare; -help adds a file of help texts to\n"
    "the program. tarvex-run does the same tests without windows.\n";

// Behind "-help" every argument is a file.
bool IsForHelp(int argc, char** argv)
{
    return argc > 1 && strcmp(argv[1], "-help") == 0;
}

// What is asked for on standard output, or null.
const char* AnswerTo(int argc, char** argv)
{
    for (int i = 1; i < argc; i++) {
        if (strcmp(argv[i], "--help") == 0)
            return kUsage;
        if (strcmp(argv[i], "--version") == 0)
            return "tarvex " TARVEX_VERSION "\n";
    }
    return nullptr;
}

// The first option that there is not, or null. Switches with one dash were always passed over.
const char* UnknownOption(int argc, char** argv)
{
    for (int i = 1; i < argc; i++) {
        if (strncmp(argv[i], "--", 2) == 0 && argv[i][2] != '\0')
            return argv[i];
    }
    return nullptr;
}

// A start with files, or nothing, is for the program that runs already; a switch is for one's own.
bool IsForAnyone(int argc, char** argv)
{
    for (int i = 1; i < argc; i++) {
        if (argv[i][0] == '-')
            return false;
    }
    return true;
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
    if (!IsForHelp(argc, argv)) {
        if (const char* answer = AnswerTo(argc, argv))
            return Print(answer);
        if (const char* option = UnknownOption(argc, argv)) {
            fprintf(stderr, "tarvex: unknown option <%s>\n", LibPrintable(option).c_str());
            return 2;
        }
    }
    BSingleLaunch launch("tarvex");
    const status_t status = IsForHelp(argc, argv) ? B_BUSY : launch.Claim(IsForAnyone(argc, argv));
    if (status == B_ALREADY_RUNNING)
        return 0;
    if (status == B_TIMED_OUT) {
        fprintf(stderr, "Tarvex is running (process %d) but does not answer\n", launch.Other());
        return 1;
    }
    if (!HasScreen())
        return 1;
    prepare_windows();
    TarvexApp* app = new TarvexApp;
    launch.Serve();
    app->Run();
    delete app;
    return 0;
}
