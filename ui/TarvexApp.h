// The application.
#pragma once

#include "toolkit/LibApp.h"

#include <Message.h>

#include <string>

class TarvexWin;

class TarvexApp : public LibApp {
public:
    TarvexApp();
    ~TarvexApp() override;

    // "-scmp" as the only argument allows the user to save comparisons. Files and folders are shown
    // in the comparison, which also tells of those that cannot be. A later start of the program
    // without any brings its window to the front.
    void ArgvReceived(int32 argc, char** argv) override;
    void RefsReceived(BMessage* message) override; // the same
    void ReadyToRun() override;
    BWindow* Window() override;
    void MessageReceived(BMessage* message) override;
    // Asks the main window, which ends a run with it, and returns true.
    bool QuitRequested() override;

protected:
    void AddHelp(LibHelp& topics) override;
    BWindow* MakeSystemWindow() override;

private:
    void TakeFile(const std::string& folder, const char* path);
    void ShowFiles();

    OwnedWindow<TarvexWin> mainWindow;
    bool allowSaveComparison = false;
    bool isReady = false; // the main window is there
    BMessage files { B_REFS_RECEIVED }; // to be shown
};
