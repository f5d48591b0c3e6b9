// The base of a program with one main window.
#pragma once

#include "foundation/LibString.h"
#include "toolkit/LibInterfaceApp.h"
#include "toolkit/OwnedWindow.h"

#include <atomic>

class LibAboutWindow;

class LibApp : public LibInterfaceApp {
public:
    // helpText: as LibInterfaceApp's.
    LibApp(const char* signature, const char* name, const char* buildDate,
        const char* helpText = nullptr);
    ~LibApp() override;

    // Makes the main window where there is none, and returns it: a window whose thread runs.
    virtual BWindow* Window() = 0;

    // Shows the main window, the first time only.
    void ReadyToRun() override;
    // Shows the main window. The first time, posts 'appr' to the application afterwards.
    void ShowMainWindow();

    // 'sabt' shows the about window, 'ssys' the system window: each is made on the first request
    // and brought to the front on the next ones, until it says by 'ABTQ' or 'SYSQ' that it closes.
    void MessageReceived(BMessage* message) override;

    // Asks the platform whether the program may quit; IsQuitting() is true meanwhile, and stays so
    // when the answer is yes.
    bool QuitRequested() override;
    bool IsQuitting() const { return quitting; }

    // What the program says of itself.
    const char* AppName() const { return name; }
    const char* BuildDate() const { return buildDate; }

protected:
    // A new system window that tells this application by 'SYSQ' when it closes; see OwnedWindow.
    virtual BWindow* MakeSystemWindow() = 0;

private:
    void ShowAbout();

    LibString name;
    LibString buildDate;
    OwnedWindow<LibAboutWindow> about;
    OwnedWindow<BWindow> system;
    bool ready = false;
    bool shown = false;
    std::atomic<bool> quitting = false; // windows ask from their own threads
};
