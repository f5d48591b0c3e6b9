// The application.
#pragma once

#include "toolkit/LibApp.h"

#include <Message.h>
#include <Messenger.h>

class TarvexWin;

class TarvexApp : public LibApp {
public:
    TarvexApp();

    // "-scmp" as the only argument allows the user to save comparisons. Where all arguments are
    // results files they are shown in the comparison.
    void ArgvReceived(int32 argc, char** argv) override;
    void ReadyToRun() override;
    BWindow* Window() override;
    void MessageReceived(BMessage* message) override;
    // Asks the main window, which ends a run with it, and returns true.
    bool QuitRequested() override;

protected:
    void AddHelp(LibHelp& topics) override;
    BWindow* MakeSystemWindow() override;

private:
    TarvexWin* window = nullptr; // a closed one is gone: mainTarget knows
    BMessenger mainTarget;
    bool allowSaveComparison = false;
    BMessage files { B_REFS_RECEIVED }; // to be shown
};
