// The base of all of the program's windows, and the places that they go to.
#pragma once

#include <GraphicsDefs.h>
#include <Rect.h>
#include <Window.h>

#include <vector>

// The rules that LibWindow::SetPosition() knows; any other number counts as kCascade.
enum window_position {
    kCascade = 0, // below and to the right of the window placed before, then from the top again
    kCentred = 1, // in the middle of the screen
    // At the main window's right, else at its left, else in the screen's corner; where another
    // window is there already beside that, or so much lower that its title stays in sight.
    kBesideMain = 4,
};

// Where the program's windows go on the screen, as plain arithmetic.
struct WindowPlacement {
    BRect screen;
    BRect mainWindow; // invalid while there is none
    std::vector<BRect> others {}; // the windows that are shown, the main one among them

    // The left top corner for a window of this frame. The window lies wholly on the screen with the
    // title and borders that a window manager puts around it; one too large for that starts in
    // the left top corner. nth counts the windows that were cascaded before this one.
    BPoint Place(BRect window, int32 position, int32 nth) const;
    // The frame, moved onto the screen if it does not lie there.
    BRect FitInScreen(BRect window) const;
    // The left top corner for a window of this frame in the middle of another one, as far as the
    // screen has room.
    BPoint Over(BRect window, BRect other) const;

private:
    BRect Room(BRect window) const;
    BPoint Cascaded(BRect room, int32 nth) const;
    BPoint BesideMain(BRect window, BRect room) const;
    BPoint ClearOfOthers(BRect window, BRect room, BPoint usual) const;
    bool Hides(BRect window, BPoint corner, bool titlesOnly) const;
};

// The frame, moved onto the main screen if it does not lie there.
[[nodiscard]] BRect LibFitInScreen(BRect frame);

// Whether a message that brought a key, or none, is of the function key of this number with Shift.
[[nodiscard]] bool LibIsShiftedKey(const BMessage* message, int32 key);

// A BWindow that knows where to go on the screen.
class LibWindow : public BWindow {
public:
    LibWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
        uint32 workspaces = B_CURRENT_WORKSPACE);
    ~LibWindow() override;

    // Moves the window to the place that a rule of window_position gives it, wholly on the main
    // screen. The window must be locked, or not shown yet. One that was hidden meanwhile goes, when
    // it is first shown, to the place that is right then.
    void SetPosition(const int32& position = kCascade);
    // The same over another window, of that frame.
    void SetPositionOver(BRect frame);

    // Shift-F1 asks the application, by 'help', for the help on the control with the keyboard: its
    // strings "topic" are the names of that view, of those around it, and of the window.
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void Show() override; // the views get their tool tips the first time
    void Hide() override;
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
    void KeepFrame();
    void AskForHelp() const;

    bool mainWindow = false;
    bool hasAppeared = false;
    bool isBesideMain = false; // since it was placed so, and until it is moved
    bool escapeCloses = false;
    bool closeHides = false;
    bool hasToolTips = false;
};

// Colours of text on the windows' background, which the desktop chooses.
// The colour, or where the background is dark one as much brighter as it takes to read it there.
[[nodiscard]] rgb_color LibOnPanel(rgb_color color);
