#include "toolkit/LibApp.h"

#include <Message.h>
#include <Window.h>

LibApp::LibApp(const char* signature, const char* appName, const char* date)
    : LibInterfaceApp(signature), name(appName), buildDate(date)
{
}

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
    if (window->Lock()) {
        if (window->IsHidden())
            window->Show();
        window->Unlock();
    }
    if (shown)
        return;
    shown = true;
    PostMessage('appr');
}

void LibApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case 'sabt': {
            LibString about;
            about.Formatted("About %s...", AppName());
            SayMissing(about);
            break;
        }
        case 'ssys': SayMissing("System..."); break;
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

void LibApp::SetVersion(const char* number, const char* shortDescription)
{
    version = number;
    description = shortDescription;
}
