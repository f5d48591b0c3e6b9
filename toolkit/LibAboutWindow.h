// The about box. Told its target by 'ABTQ' when the user closes it.
#pragma once

#include "toolkit/LibWindow.h"

class BLooper;
class LibAboutView;

class LibAboutWindow : public LibWindow {
public:
    LibAboutWindow(BLooper* target, const char* appName, const char* releaseDate); // hidden

    // Moves the window to these workspaces, as BWindow::SetWorkspaces().
    void UpdateWorkspace(const long& workspaces);
    bool QuitRequested() override;

private:
    BLooper* target;
    LibAboutView* aboutView;
};
