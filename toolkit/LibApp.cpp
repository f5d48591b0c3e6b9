#include "toolkit/LibApp.h"

#include "toolkit/LibAboutWindow.h"

#include <Autolock.h>

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
