#include "toolkit/LibApp.h"

#include "toolkit/LibAboutWindow.h"
#include "toolkit/LibTargetLock.h"

#include <Autolock.h>
#include <Message.h>
#include <Window.h>

namespace {

// False if the window is not there any more.
bool BringToFront(const BMessenger& target)
{
    const LibTargetLock lock(target);
    if (lock.IsLocked())
        static_cast<BWindow*>(lock.Looper())->Activate();
    return lock.IsLocked();
}

} // namespace

LibApp::LibApp(const char* signature, const char* appName, const char* date, const char* helpText)
    : LibInterfaceApp(signature, helpText), name(appName), buildDate(date)
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
    if (BringToFront(aboutTarget))
        return;
    auto* window = new LibAboutWindow(this, AppName(), BuildDate());
    aboutTarget = BMessenger(window);
    window->Show();
}

void LibApp::ShowSystem()
{
    if (BringToFront(systemTarget))
        return;
    BWindow* window = MakeSystemWindow();
    if (!window)
        return;
    systemTarget = BMessenger(window);
    window->Show();
}

void LibApp::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case 'sabt': ShowAbout(); break;
        case 'ssys': ShowSystem(); break;
        case 'ABTQ': aboutTarget = BMessenger(); break;
        case 'SYSQ': systemTarget = BMessenger(); break;
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
