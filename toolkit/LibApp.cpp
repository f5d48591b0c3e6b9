#include "toolkit/LibApp.h"

#include "toolkit/LibAboutWindow.h"

#include <Application.h>
#include <Autolock.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

LibInterfaceApp::LibInterfaceApp(const char* signature, const char* helpText)
    : BApplication(signature), ownHelp(helpText)
{
}

LibInterfaceApp::~LibInterfaceApp()
{
    LibSetToolTips(nullptr); // a window that is shown later is another application's
}

void LibInterfaceApp::ArgvReceived(int32 argc, char** argv)
{
    if (argc <= 1 || strcmp(argv[1], "-help") != 0)
        return;
    if (argc != 3) {
        // Misspelt as it always has been.
        fprintf(stderr, "Help file requred\n");
        return;
    }
    exit(LibHelp::AddToResources(argv[2]) ? 0 : 1);
}

void LibInterfaceApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case 'appr': ReadOwnHelp(); break;
        case 'help': AnswerHelp(*message); break;
        case 'stip': SetTip(*message); break;
        case 'tipf': SwitchTips(*message); break;
        default: BApplication::MessageReceived(message); break;
    }
}

// After the first window is shown: it need not wait for its tips.
void LibInterfaceApp::ReadOwnHelp()
{
    if (hasOwnHelp)
        return;
    hasOwnHelp = true;
    if (ownHelp)
        help.ReadText(ownHelp);
    AddHelp(help);
    LibSetToolTips(&help);
    LibShowToolTips(showsTips);
}

// Files that were added are read when the help is first asked for: unpacking them takes a while.
void LibInterfaceApp::ReadHelp()
{
    ReadOwnHelp();
    if (hasHelp)
        return;
    hasHelp = true;
    help.ReadResources();
    LibSetToolTips(&help);
}

void LibInterfaceApp::AnswerHelp(const BMessage& request)
{
    ReadHelp();
    const char* topic = nullptr;
    int32 found = -1;
    // The names lead from the control outwards: the first with a topic is the closest.
    for (int32 i = 0; found < 0 && request.FindString("topic", i, &topic) == B_OK; i++)
        found = help.IndexOf(topic);
    ShowTopic(std::max(found, 0));
}

void LibInterfaceApp::ShowHelp(const char* topic)
{
    ReadHelp();
    ShowTopic(std::max(help.IndexOf(topic), 0));
}

void LibInterfaceApp::ShowTopic(int32 index)
{
    if (help.CountTopics() == 0)
        return;
    // Before it is shown: the first topic would be seen for a moment.
    helpWindow.Make([this] { return new LibHelpWindow(help); });
    helpWindow.With([index](LibHelpWindow& window) { window.ShowTopic(index); });
    helpWindow.Front();
}

void LibInterfaceApp::SwitchTips(const BMessage& request)
{
    bool show = !showsTips;
    request.FindBool("show", &show);
    showsTips = show;
    LibShowToolTips(show);
}

void LibInterfaceApp::SetTip(const BMessage& request)
{
    const char* name = nullptr;
    const char* text = nullptr;
    if (request.FindString("name", &name) != B_OK || request.FindString("text", &text) != B_OK)
        return;
    help.SetTip(name, text);
    hasNewTips = true;
}

// Windows have their tips from before: all are given them again, as any may have a view whose tip
// was set, but once for all tips that were set one after the other.
void LibInterfaceApp::Pulse()
{
    if (!std::exchange(hasNewTips, false))
        return;
    LibSetToolTips(&help);
    LibShowToolTips(showsTips);
}

LibApp::LibApp(const char* signature, const char* appName, const char* date, const char* helpText)
    : LibInterfaceApp(signature, helpText), name(appName), buildDate(date)
{
}

// Not in the header, which does not know the windows that end here.
LibApp::~LibApp() = default;

void LibApp::ReadyToRun()
{
    if (ready)
        return;
    ready = true;
    ShowMainWindow();
}

void LibApp::ShowMainWindow()
{
    BWindow* window = Window();
    {
        const BAutolock lock(window);
        if (lock.IsLocked() && window->IsHidden())
            window->Show();
    }
    if (shown)
        return;
    shown = true;
    PostMessage('appr');
}

void LibApp::ShowAbout()
{
    about.Show([this] { return new LibAboutWindow(this, AppName(), BuildDate()); });
}

void LibApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case 'sabt': ShowAbout(); break;
        case 'ssys': system.Show([this] { return MakeSystemWindow(); }); break;
        case 'ABTQ': about.Closed(*message); break;
        case 'SYSQ': system.Closed(*message); break;
        default: LibInterfaceApp::MessageReceived(message); break;
    }
}

bool LibApp::QuitRequested()
{
    quitting = true;
    const bool quit = LibInterfaceApp::QuitRequested();
    quitting = quit;
    return quit;
}

MainMenuBar::MainMenuBar(BRect frame, const char* applicationName)
    : BMenuBar(frame, "menubar"), applicationMenu(new BMenu(applicationName))
{
    LibString about;
    about.Formatted("About %s...", applicationName);
    const struct {
        const char* label;
        uint32 what;
        char shortcut;
    } items[] = {
        { about, 'sabt', 0 },
        // Not 'help', which asks about the control with the keyboard.
        { "Help...", 'Help', 0 },
        { "System...", 'ssys', 0 },
        { nullptr, 0, 0 },
        { "Quit", B_QUIT_REQUESTED, 'Q' },
    };
    for (const auto& row : items) {
        BMenuItem* item = row.label ? new BMenuItem(row.label, new BMessage(row.what), row.shortcut)
                                    : new BSeparatorItem;
        // Else the window would get it, as an item's message goes to the menu's window.
        item->SetTarget(be_app);
        applicationMenu->AddItem(item);
    }
    AddItem(applicationMenu);
}
