#include "ui/TarvexApp.h"

#include "foundation/LibAppInfo.h"
#include "results/ResultsFile.h"
#include "toolkit/MessageBoxes.h"
#include "ui/AboutSysWindow.h"
#include "ui/HelpText.h"
#include "ui/TarvexWin.h"

#include <Entry.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

TarvexApp::TarvexApp()
    : LibApp("application/x-vnd.Quorvane.Trvx", "Tarvex", "16 November 2000", kHelpText)
{
    constexpr uint32 kFinal = 5;
    LibSetAppVersion(1, 2, 6, "BeOS benchmark", nullptr, kFinal, 0);
}

void TarvexApp::ArgvReceived(int32 argc, char** argv)
{
    if (argc == 2 && strcmp(argv[1], "-scmp") == 0) {
        fprintf(stderr, "Allowed to save comparisons\n");
        allowSaveComparison = true;
    }
    const bool areFiles = argc > 1
        && std::all_of(argv + 1, argv + argc, [](char* path) { return IsResultsFile(path); });
    for (int32 i = 1; areFiles && i < argc; i++) {
        entry_ref ref;
        if (get_ref_for_path(argv[i], &ref) == B_OK)
            files.AddRef("refs", &ref);
    }
    LibApp::ArgvReceived(argc, argv);
}

void TarvexApp::ReadyToRun()
{
    LibApp::ReadyToRun();
    if (!files.IsEmpty())
        mainTarget.SendMessage(&files);
    files.MakeEmpty();
}

BWindow* TarvexApp::Window()
{
    if (!mainTarget.IsValid()) {
        window = new TarvexWin(allowSaveComparison);
        mainTarget = BMessenger(window);
        window->Show();
        if (window->Thread() < B_OK) // it has said so; without it there is no program
            exit(1);
    }
    return window;
}

BWindow* TarvexApp::MakeSystemWindow()
{
    return new AboutSysWindow(this);
}

void TarvexApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case 'Help': ShowHelp("Tarvex"); break;
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
