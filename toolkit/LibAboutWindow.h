// The about box.
#pragma once

#include "toolkit/LibWindow.h"

#include <View.h>

class BLooper;
class BStringView;

// What an about box shows: the program's name, version and release date, and who made it.
class LibAboutView : public BView {
public:
    explicit LibAboutView(BRect frame);

    void SetAppName(const char* name);
    void SetVersion(const char* version); // shown as "Version: version"
    void SetReleaseDate(const char* date); // shown as "Released: date"
    // The width of the widest of name, version, date and maker, in pixels; 0 if all are empty.
    float WidestString() const;

private:
    BStringView* AddLine(const char* name, float top, float bottom, float size);

    BStringView* appName;
    BStringView* version;
    BStringView* releaseDate;
    BStringView* company;
};

// Told its target by 'ABTQ' when the user closes it.
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
