#include "ui/TarvexApp.h"

#include "foundation/LibAppInfo.h"
#include "results/ResultsFile.h"
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
    // What stands behind it is a file of help texts, and no results.
    const bool isForHelp = argc > 1 && strcmp(argv[1], "-help") == 0;
    for (int32 i = 1; !isForHelp && i < argc; i++) {
        if (argv[i][0] != '-') // a switch that is none is ignored
            TakeFile(argv[i]);
    }
    LibApp::ArgvReceived(argc, argv);
}

// Files wait for the window that shows them: arguments come before ReadyToRun().
void TarvexApp::TakeFile(const char* path)
{
    const BEntry entry(path, true);
    entry_ref ref;
    // Only a plain file is opened: a pipe would be waited for.
    if (entry.IsFile() && IsResultsFile(path) && get_ref_for_path(path, &ref) == B_OK)
        files.AddRef("refs", &ref);
    else if (entry.Exists())
        fprintf(stderr, "<%s> cannot be read as a results file\n", path);
    else
        fprintf(stderr, "Cannot find <%s>\n", path);
}

void TarvexApp::ReadyToRun()
{
    LibApp::ReadyToRun();
    // The window is up by now: processors that must be switched on can take seconds.
    RestoreProcessors();
    if (!files.IsEmpty() && !mainWindow.Tell(files))
        fprintf(stderr, "The files cannot be shown\n");
    files.MakeEmpty();
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
