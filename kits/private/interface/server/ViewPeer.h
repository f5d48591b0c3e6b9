// What a BView has on the display server: its widget and the link by which the widget reports.
// Widgets are touched on the server's thread only, inside a display::Call of the view's side.
#pragma once

#include "AppDefs.h"
#include "Messenger.h"
#include "Mutex.h"
#include "Rect.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>

#include <atomic>
#include <map>
#include <memory>
#include <optional>

class BMessage;
class QAction;
class QKeyEvent;
class QMouseEvent;
class QPushButton;

// Codes of the messages with which the display server reports to windows and views, beside the
// platform's own of AppDefs.h.
enum {
    kMsgWidgetChanged = '_WGC', // to a view: the user changed its widget; fields are the control's
    kMsgFocused = '_FOC', // to a view: it has the keyboard now
    kMsgShortcut = '_SHC', // to a window: int32 "shortcut"
};

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

// Watches a view's widget and reports its input by the view's link. Owned by the widget.
class ViewEvents : public QObject {
public:
    // kView: the program handles the input, so mouse, wheel and keys become messages to the view.
    // kControl: Qt does; only the focus is reported.
    enum class Kind { kView, kControl };

    ViewEvents(std::shared_ptr<ViewLink> link, Kind kind, QWidget* widget);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void FollowTip(const QWidget& widget, const QEvent& event);
    bool HandleForView(QEvent* event);
    void MouseMoved(const QMouseEvent& event);
    void EnteredOrLeft(int32 transit);
    bool KeyPressed(const QKeyEvent& event);

    const std::shared_ptr<ViewLink> fLink;
    const Kind fKind;
    QWidget* const fWidget;
    std::optional<QPoint> fRest; // the pointer's, on the screen, since Qt asked for the tip
    QString fTip; // that was shown there, or nothing
};

// Gives a new widget what all of them have: the view's name, its focus rule and its ViewEvents.
void Equip(ViewPeer& peer, const char* name, ViewEvents::Kind kind);

// A menu's widget, and its items' actions by their ids. On the display server only.
struct MenuPeer {
    std::shared_ptr<ViewLink> link; // made with the peer; the rest by the server
    QWidget* widget = nullptr; // QMenu or QMenuBar
    QPushButton* field = nullptr; // a BMenuField's, that opens it
    std::map<int32, QAction*> actions;
};
