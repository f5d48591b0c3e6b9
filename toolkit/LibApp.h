// The base of a program with one main window.
#pragma once

#include "foundation/LibString.h"
#include "toolkit/LibInterfaceApp.h"

#include <atomic>

class BWindow;

class LibApp : public LibInterfaceApp {
public:
    LibApp(const char* signature, const char* name, const char* buildDate);

    // Makes the main window where there is none, and returns it: a window whose thread runs.
    virtual BWindow* Window() = 0;

    // Shows the main window, the first time only.
    void ReadyToRun() override;
    // Shows the main window. The first time, posts 'appr' to the application afterwards.
    void ShowMainWindow();

    // 'sabt' is for the about window, 'ssys' for the system window.
    void MessageReceived(BMessage* message) override;

    // Asks the platform whether the program may quit; IsQuitting() is true meanwhile, and stays so
    // when the answer is yes.
    bool QuitRequested() override;
    bool IsQuitting() const { return quitting; }

    // What the program says of itself.
    void SetVersion(const char* number, const char* shortDescription);
    const char* AppName() const { return name; }
    const char* BuildDate() const { return buildDate; }
    const char* Version() const { return version; }
    const char* ShortDescription() const { return description; }

private:
    LibString name;
    LibString buildDate;
    LibString version;
    LibString description;
    bool ready = false;
    bool shown = false;
    std::atomic<bool> quitting = false; // windows ask from their own threads
};
