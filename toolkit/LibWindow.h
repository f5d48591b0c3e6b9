// The base of all of the program's windows.
#pragma once

#include "toolkit/WindowPlacement.h"

#include <GraphicsDefs.h>
#include <Window.h>

// The frame, moved onto the main screen if it does not lie there.
[[nodiscard]] BRect LibFitInScreen(BRect frame);

// A BWindow that knows where to go on the screen.
class LibWindow : public BWindow {
public:
    LibWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
        uint32 workspaces = B_CURRENT_WORKSPACE);
    ~LibWindow() override;

    // Moves the window to the place that a rule of window_position gives it, wholly on the main
    // screen. The window must be locked, or not shown yet.
    void SetPosition(const int32& position = kCascade);

    // Shift-F1 asks the application, by 'help', for the help on the control with the keyboard: its
    // strings "topic" are the names of that view, of those around it, and of the window.
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void Show() override; // the views get their tool tips the first time
    void FrameMoved(BPoint corner) override;
    void FrameResized(float width, float height) override;

protected:
    // From here on kBesideMain places other windows beside this one, wherever it moves.
    void SetMainWindow();
    // From here on Escape closes this window as its close box does.
    void CloseOnEscape() { escapeCloses = true; }
    // From here on closing this window only hides it; the application or its owner quits it.
    void HideOnClose() { closeHides = true; }

private:
    void KeepMainFrame();
    void AskForHelp() const;

    bool mainWindow = false;
    bool escapeCloses = false;
    bool closeHides = false;
    bool hasToolTips = false;
};

// Colours of text on the windows' background, which the desktop chooses.
// The colour, or where the background is dark one as much brighter as it takes to read it there.
[[nodiscard]] rgb_color LibOnPanel(rgb_color color);
