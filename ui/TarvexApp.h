// The application.
#pragma once

#include "toolkit/LibApp.h"

#include <Message.h>

class TarvexWin;

class TarvexApp : public LibApp {
public:
    TarvexApp();
    ~TarvexApp() override;

    // "-scmp" as the only argument allows the user to save comparisons. Arguments that are results
    // files are shown in the comparison; of each other one but a switch standard error tells.
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
    void TakeFile(const char* path);

    OwnedWindow<TarvexWin> mainWindow;
    bool allowSaveComparison = false;
    BMessage files { B_REFS_RECEIVED }; // to be shown
};
