// A window, its looper and its port: it runs in a thread of its own from the first Show() on.
// Everything but the constructor may be called from any thread; what is not said to lock by itself
// needs the window's lock.
#pragma once

#include "InterfaceDefs.h"
#include "Looper.h"
#include "Mutex.h"
#include "Rect.h"

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

class BButton;
class BMenuBar;
class BMenuItem;
class BView;
class DrawConnection;
struct WindowPeer;
class WindowWidget;
struct WindowShortcut;

class BWindow : public BLooper {
public:
    // A hidden window whose contents take frame on the screen; the border lies around it. Without
    // a display the constructor says so on standard error and ends the program with status 1.
    BWindow(BRect frame, const char* title, window_type type, uint32 flags,
        uint32 workspace = B_CURRENT_WORKSPACE);
    BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
        uint32 workspace = B_CURRENT_WORKSPACE);
    ~BWindow() override; // by Quit() only; deletes the views

    // Hooks, called in the window's thread with the window locked.
    bool QuitRequested() override; // with B_QUIT_ON_WINDOW_CLOSE asks the application to quit
    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    virtual void FrameMoved(BPoint /*newPosition*/) { }
    virtual void FrameResized(float /*newWidth*/, float /*newHeight*/) { }
    virtual void WindowActivated(bool /*active*/) { }

    // Showing. Each locks by itself; asking needs no lock. The first Show() starts the looper and
    // gives its lock free.
    virtual void Show();
    virtual void Hide(); // nests: as many Show() as Hide()
    bool IsHidden() const { return fHidden > 0; }
    void Activate(bool active = true); // to the front, with the keyboard; false: to the back
    bool IsActive() const { return fActive; }
    bool IsFront() const { return fActive; }

    // Each locks by itself.
    void SetTitle(const char* title); // null is an empty one
    const char* Title() const { return fTitle.c_str(); } // until the next SetTitle()
    window_look Look() const { return fLook; }
    window_feel Feel() const { return fFeel; }
    uint32 Flags() const { return fFlags; }
    status_t SetFlags(uint32 flags);
    uint32 Workspaces() const
    {
        return fWorkspaces;
    } // bits, as SetWorkspaces() or the
      // constructor had them
    void SetWorkspaces(uint32 workspaces); // the lowest bit's one, or B_ALL_WORKSPACES

    // Geometry in screen coordinates, of the contents. The setters lock by themselves, the others
    // may be called without the lock.
    BRect Frame() const;
    BRect Bounds() const { return Frame().OffsetToCopy(0, 0); }
    void MoveTo(BPoint where);
    void MoveTo(float x, float y) { MoveTo(BPoint(x, y)); }
    void ResizeTo(float width, float height); // as BRect counts, within the size limits
    void ResizeBy(float dx, float dy);
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    BPoint ConvertToScreen(BPoint point) const { return point + Frame().LeftTop(); }

    // The views. As BView's calls of the same names; AddChild() locks.
    void AddChild(BView* child, BView* before = nullptr);
    int32 CountChildren() const;
    BView* ChildAt(int32 index) const;
    BView* FindView(const char* name) const;
    BView* CurrentFocus() const; // null where no view has the keyboard

    // The button that Enter presses; the return value is the one before. null: none.
    BButton* DefaultButton() const { return fDefaultButton; }
    void SetDefaultButton(BButton* button);

    // The command key (Ctrl) with key and further modifiers posts a copy of message to target, or
    // to the view in focus where target is not given, else to the window. The window owns message.
    // The same combination given before is replaced. Command-W closes a closable window and
    // command-Q quits the application unless they are given here or in a menu.
    void AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target = nullptr);
    void RemoveShortcut(uint32 key, uint32 modifiers);
    void SetKeyMenuBar(BMenuBar* bar) { fKeyMenuBar = bar; } // the first one added is it at first
    BMenuBar* KeyMenuBar() const { return fKeyMenuBar; }

    void Flush() const; // sends what views have drawn
    void Sync() const; // the same, and waits until it is on the screen
    void UpdateIfNeeded(); // draws at once what waits to be drawn; in the window's thread only

protected:
    void MessageHandled() override; // sends what the views have drawn
    // A key that no view wanted, with the message in CurrentMessage(). The base presses the
    // default button on Enter.
    virtual void UnusedKeyDown(const char* bytes, int32 numBytes);

private:
    friend class BAlert;
    friend class BButton;
    friend class BFilePanel;
    friend class BMenu;
    friend class BMenuBar;
    friend class BMenuItem;
    friend class BPopUpMenu;
    friend class BView;
    friend class DrawConnection;
    friend class DrawContext;

    static BWindow* Calling(); // whose thread this is, or null
    WindowWidget* Widget() const; // on the display server's thread
    void MakeWidget();
    // From the display server.
    bool HandleServerMessage(BMessage* message);
    void HandleUpdate();
    void UpdateViews(BView* view);
    void HandleActivated(bool active);
    void HandleMoved(BMessage* message);
    void HandleResized(BMessage* message);
    void HandleKeyDown(BMessage* message);
    void HandleShortcut(BMessage* message);
    void ResizeViews(float width, float height);
    BRect Limited(BRect frame) const;
    void Place(BRect frame);
    void KeepFrame(BRect frame);
    void ViewDetached(BView* view); // forgets it as focus, default button and target
    void AddMenuShortcut(BMenuItem* item);
    void RemoveMenuShortcut(BMenuItem* item);
    void SetShortcut(std::unique_ptr<WindowShortcut> shortcut);
    // Drawing's half (drawing/).
    void FlushDrawing();
    void SyncDrawing();

    std::string fTitle;
    mutable Mutex fFrameLock; // leaf
    BRect fFrame GUARDED_BY(fFrameLock);
    window_look fLook;
    window_feel fFeel;
    uint32 fFlags;
    uint32 fWorkspaces;
    std::atomic<int32> fHidden = 1;
    std::atomic<bool> fActive = false;
    bool fRunning = false;
    float fMinWidth = 0;
    float fMaxWidth = 32767;
    float fMinHeight = 0;
    float fMaxHeight = 32767;
    int32 fGeometrySerial = 0; // of the last change made here; older reports say nothing new
    std::unique_ptr<BView> fTop; // holds the window's views; its frame is the window's bounds
    BView* fFocus = nullptr;
    bool fFocusIsShown = false; // a change of fFocus comes from the widgets
    BButton* fDefaultButton = nullptr;
    BMenuBar* fKeyMenuBar = nullptr;
    std::map<int32, std::unique_ptr<WindowShortcut>> fShortcuts; // by key and modifiers
    std::unique_ptr<WindowPeer> fPeer;
    std::unique_ptr<DrawConnection> fConnection; // made when a view first draws
};
