#include "ui/TarvexApp.h"

#include "foundation/LibAppInfo.h"
#include "foundation/Utf8.h"
#include "results/TestCatalogue.h"
#include "toolkit/MessageBoxes.h"
#include "ui/AboutSysWindow.h"
#include "ui/HelpText.h"
#include "ui/TarvexWin.h"

#include <Alert.h>
#include <Entry.h>
#include <MachineRun.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Says what a killed run has left of the machine, without holding anything up.
void RestoreProcessors()
{
    const std::string restored = restore_processors();
    if (restored.empty())
        return;
    fprintf(stderr, "%s\n", restored.c_str());
    BAlert* alert = new BAlert("Processors", restored.c_str(), "OK");
    alert->SetShortcut(0, B_ESCAPE);
    alert->Go(nullptr);
}

} // namespace

TarvexApp::TarvexApp()
    : LibApp("application/x-vnd.Quorvane.Trvx", "Tarvex", "16 November 2000", kHelpText)
{
    constexpr uint32 kFinal = 5;
    LibSetAppVersion(1, 2, 6, "BeOS benchmark", nullptr, kFinal, 0);
}

TarvexApp::~TarvexApp() = default;

void TarvexApp::ArgvReceived(int32 argc, char** argv)
{
    if (argc == 2 && strcmp(argv[1], "-scmp") == 0) {
        fprintf(stderr, "Allowed to save comparisons\n");
        allowSaveComparison = true;
    }
    // Of a later start, which was made anywhere.
    const char* folder = "";
    if (const BMessage* message = CurrentMessage())
        message->FindString("cwd", &folder);
    // What stands behind it is a file of help texts, and no results.
    const bool isForHelp = argc > 1 && strcmp(argv[1], "-help") == 0;
    for (int32 i = 1; !isForHelp && i < argc; i++) {
        if (argv[i][0] != '-') // a switch that is none is ignored
            TakeFile(folder, argv[i]);
    }
    if (isReady)
        ShowFiles();
    LibApp::ArgvReceived(argc, argv);
}

void TarvexApp::RefsReceived(BMessage* message)
{
    entry_ref ref;
    for (int32 i = 0; message->FindRef("refs", i, &ref) == B_OK; i++)
        files.AddRef("refs", &ref);
    if (isReady)
        ShowFiles();
}

void TarvexApp::TakeFile(const std::string& folder, const char* path)
{
    const std::string whole = path[0] == '/' || folder.empty() ? path : folder + "/" + path;
    const BEntry entry(whole.c_str(), true);
    entry_ref ref;
    if (entry.Exists() && get_ref_for_path(whole.c_str(), &ref) == B_OK) {
        files.AddRef("refs", &ref);
        return;
    }
    const std::string refusal = "Cannot find <" + LibPrintable(path) + ">";
    fprintf(stderr, "%s\n", refusal.c_str());
    files.AddString("refused", refusal.c_str());
}

// Without files the program's window comes to the front, for whoever started it once more.
void TarvexApp::ShowFiles()
{
    if (files.IsEmpty())
        mainWindow.Front();
    else if (!mainWindow.Tell(files))
        fprintf(stderr, "The files cannot be shown\n");
    files.MakeEmpty();
}

// Files wait for the window that shows them: arguments come before this.
void TarvexApp::ReadyToRun()
{
    LibApp::ReadyToRun();
    // The window is up by now: processors that must be switched on can take seconds.
    RestoreProcessors();
    isReady = true;
    if (!files.IsEmpty())
        ShowFiles();
}

BWindow* TarvexApp::Window()
{
    return mainWindow.Make([this] {
        auto* window = new TarvexWin(allowSaveComparison);
        // A window's thread begins with its first Show().
        window->Show();
        if (window->Thread() < B_OK) // it has said so; without it there is no program
            exit(1);
        return window;
    });
}

void TarvexApp::AddHelp(LibHelp& topics)
{
    for (const TestGroup& group : kTestGroups)
        if (group.box != GroupBox::kNone)
            topics.AddTopic(group.viewName, group.label, group.help, group.tip);
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
