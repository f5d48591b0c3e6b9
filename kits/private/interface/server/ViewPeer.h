// What a BView has on the display server: its widget and the link by which the widget reports.
// Widgets are touched on the server's thread only, inside a display::Call of the view's side.
#pragma once

#include "Messenger.h"
#include "Mutex.h"
#include "Rect.h"

#include <QRect>
#include <QWidget>

#include <atomic>
#include <memory>

class BMessage;

// The window's end of all its links.
struct WindowLink {
    BMessenger window;
    std::atomic<bool> updatePosted = false; // one _UPDATE_ is on its way
};

// Lives as long as one of view and widget; knows neither.
class ViewLink {
public:
    ViewLink(std::shared_ptr<WindowLink> window, const BMessenger& view, uint32 flags);

    // To the view, never waiting, never lost. Latest: replaces one of the same kind that waits.
    void Post(const BMessage& message) const;
    void PostLatest(const BMessage& message) const;
    // Asks for Draw() of rect, in pixels of the view from its left top; does nothing for a view
    // without B_WILL_DRAW.
    void AddDirty(BRect rect);
    BRect TakeDirty(); // what was asked for since; invalid: nothing
    WindowLink& Window() const { return *fWindow; }

    std::atomic<uint32> flags; // the view's

private:
    const std::shared_ptr<WindowLink> fWindow;
    const BMessenger fView;
    Mutex fLock; // leaf: never held across a Call
    BRect fDirty GUARDED_BY(fLock);
};

struct ViewPeer {
    std::shared_ptr<ViewLink> link;
    QWidget* parent = nullptr; // for MakeWidget()
    QWidget* widget = nullptr; // Qt's tree owns it; made last, destroyed first
    bool isPlain = false; // a ViewWidget: the view draws itself
};

// A widget's place in its parent, to be set on the server.
struct WidgetPlacement {
    QWidget* widget;
    QRect geometry;
};
