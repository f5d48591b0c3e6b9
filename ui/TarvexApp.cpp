#include "ui/TarvexApp.h"

#include "toolkit/MessageBoxes.h"
#include "ui/TarvexWin.h"

#include <Message.h>

#include <cstdio>
#include <cstring>

TarvexApp::TarvexApp() : LibApp("application/x-vnd.Quorvane.Trvx", "Tarvex", "16 November 2000")
{
    SetVersion("1.2.6", "BeOS benchmark");
}

void TarvexApp::ArgvReceived(int32 argc, char** argv)
{
    if (argc == 2 && strcmp(argv[1], "-scmp") == 0) {
        fprintf(stderr, "Allowed to save comparisons\n");
        allowSaveComparison = true;
    }
    LibApp::ArgvReceived(argc, argv);
}

BWindow* TarvexApp::Window()
{
    if (!mainTarget.IsValid()) {
        window = new TarvexWin(allowSaveComparison);
        mainTarget = BMessenger(window);
        window->Show();
    }
    return window;
}

void TarvexApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case 'Help': SayMissing("Help..."); break;
        default: LibApp::MessageReceived(message); break;
    }
}

bool TarvexApp::QuitRequested()
{
    // The main window answers to nobody while it waits for an alert.
    LibCloseAlerts();
    // The platform asks the oldest window first, and that takes the others with it.
    LibApp::QuitRequested();
    return true;
}
