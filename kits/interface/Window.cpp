#include "Window.h"

#include "Application.h"
#include "Autolock.h"
#include "Button.h"
#include "Check.h"
#include "drawing/DrawConnection.h"
#include "drawing/DrawContext.h"
#include "LeafLock.h"
#include "MenuItem.h"
#include "MessageDelivery.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/WindowWidget.h"
#include "View.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// A combination of keys that a window knows: of a menu item, or with a message of its own.
struct WindowShortcut {
    uint32 key = 0; // lower case
    uint32 modifiers = 0; // beside the command key
    BMenuItem* item = nullptr; // chosen if there is one; else the message is sent
    std::unique_ptr<BMessage> message;
    BMessenger target; // without one: the view in focus
};

namespace {

window_look LookOf(window_type type)
{
    switch (type) {
        case B_MODAL_WINDOW: return B_MODAL_WINDOW_LOOK;
        case B_DOCUMENT_WINDOW: return B_DOCUMENT_WINDOW_LOOK;
        case B_BORDERED_WINDOW: return B_BORDERED_WINDOW_LOOK;
        case B_FLOATING_WINDOW: return B_FLOATING_WINDOW_LOOK;
        default: return B_TITLED_WINDOW_LOOK;
    }
}

window_feel FeelOf(window_type type)
{
    if (type == B_MODAL_WINDOW)
        return B_MODAL_APP_WINDOW_FEEL;
    return type == B_FLOATING_WINDOW ? B_FLOATING_APP_WINDOW_FEEL : B_NORMAL_WINDOW_FEEL;
}

int PixelLimit(float length)
{
    // A length counts one less than its pixels, of which X11, with 16 bits, has 32767 at most.
    return static_cast<int>(std::min(length, 32766.0f)) + 1;
}

} // namespace

BWindow::BWindow(BRect frame, const char* title, window_type type, uint32 flags, uint32 workspace)
    : BWindow(frame, title, LookOf(type), FeelOf(type), flags, workspace)
{
}

BWindow::BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
    uint32 workspace)
    : BLooper(title, B_DISPLAY_PRIORITY), fTitle(title ? title : ""), fFrame(frame), fLook(look),
      fFeel(feel), fFlags(flags), fWorkspaces(workspace)
{
    if (!display::Start())
        exit(1);
    SetAskedToQuit(true);
    // Not by AddChild(): it is in the window from the start, and the window's widget is its own.
    fTop = std::make_unique<BView>(
        frame.OffsetToCopy(0, 0), nullptr, B_FOLLOW_ALL_SIDES, static_cast<uint32>(0));
    fTop->fIsTop = true;
    fTop->fWindow = this;
    AddHandler(fTop.get());
    MakeWidget();
}

void BWindow::MakeWidget()
{
    fPeer = std::make_unique<WindowPeer>();
    fPeer->link = std::make_shared<WindowLink>();
    fPeer->link->window = BMessenger(this, this);
    display::Call([this] {
        auto* widget = new WindowWidget(fPeer->link);
        widget->setWindowTitle(QString::fromStdString(fTitle));
        widget->setObjectName(QString::fromStdString(fTitle));
        // Before SetKind(), which fixes the present size of a window that cannot be resized.
        widget->Place(ToQRect(Frame()), fGeometrySerial);
        widget->SetKind(fLook, fFeel, fFlags);
        widget->SetWorkspaces(fWorkspaces);
        fPeer->widget = widget;
    });
    fTop->fPeer = std::make_unique<ViewPeer>();
    fTop->fPeer->link = std::make_shared<ViewLink>(fPeer->link, BMessenger(fTop.get(), this), 0);
    fTop->fPeer->widget = fPeer->widget;
    fTop->ViewColorChanged();
}

BWindow::~BWindow()
{
    fDefaultButton = nullptr;
    // In this order: the views give back what they have on the connection, it closes, and only then
    // the X windows go that were drawn into.
    fTop->CallDetached();
    fTop->LeaveWindow();
    fConnection.reset();
    display::Call([widget = fPeer->widget] { delete widget; });
    fTop.reset();
}

// --- Showing

BWindow* BWindow::Calling()
{
    return dynamic_cast<BWindow*>(LooperForThread(find_thread(nullptr)));
}

WindowWidget* BWindow::Widget() const
{
    return fPeer->widget;
}

void BWindow::Show()
{
    const BAutolock lock(this);
    if (!fRunning)
        fRunning = Run() >= B_OK;
    if (!fRunning)
        fprintf(stderr, "Cannot start thread <%s>: its window is not shown\n", fTitle.c_str());
    // Without a thread it would be a dead picture: it stays hidden, and the next Show() tries
    // again.
    const int32 least = fRunning ? 0 : 1;
    if (fHidden > least && --fHidden == 0) {
        const BWindow* calling = Calling();
        display::Call([this, calling] {
            fPeer->widget->Appear(calling ? calling->Widget() : nullptr);
            if (!(fFlags & B_AVOID_FOCUS))
                fPeer->widget->BringToFront();
        });
    }
}

void BWindow::Hide()
{
    const BAutolock lock(this);
    if (++fHidden == 1)
        display::Call([this] { fPeer->widget->hide(); });
}

void BWindow::Activate(bool active)
{
    const BAutolock lock(this);
    if (fHidden > 0)
        return;
    display::Call([this, active] {
        if (active)
            fPeer->widget->BringToFront();
        else
            fPeer->widget->lower();
    });
}

// --- Properties

void BWindow::SetTitle(const char* title)
{
    const BAutolock lock(this);
    fTitle = title ? title : "";
    SetName(fTitle.c_str());
    display::Call([this] {
        fPeer->widget->setWindowTitle(QString::fromStdString(fTitle));
        fPeer->widget->setObjectName(QString::fromStdString(fTitle));
    });
}

status_t BWindow::SetFlags(uint32 flags)
{
    const BAutolock lock(this);
    fFlags = flags;
    display::Call([this] { fPeer->widget->SetKind(fLook, fFeel, fFlags); });
    return B_OK;
}

void BWindow::SetWorkspaces(uint32 workspaces)
{
    const BAutolock lock(this);
    fWorkspaces = workspaces;
    display::Call([this] { fPeer->widget->SetWorkspaces(fWorkspaces); });
}

// --- Geometry

BRect BWindow::Frame() const
{
    const LeafLock lock(fFrameLock);
    return fFrame;
}

void BWindow::KeepFrame(BRect frame)
{
    const LeafLock lock(fFrameLock);
    fFrame = frame;
}

void BWindow::MoveTo(BPoint where)
{
    const BAutolock lock(this);
    Place(Frame().OffsetToCopy(where.x, where.y));
}

void BWindow::ResizeTo(float width, float height)
{
    const BAutolock lock(this);
    const BPoint leftTop = Frame().LeftTop();
    Place(Limited(BRect(leftTop, leftTop + BPoint(width, height))));
}

void BWindow::ResizeBy(float dx, float dy)
{
    const BAutolock lock(this);
    ResizeTo(Frame().Width() + dx, Frame().Height() + dy);
}

BRect BWindow::Limited(BRect frame) const
{
    frame.right = frame.left + std::max(std::min(frame.Width(), fMaxWidth), fMinWidth);
    frame.bottom = frame.top + std::max(std::min(frame.Height(), fMaxHeight), fMinHeight);
    return frame;
}

void BWindow::Place(BRect frame)
{
    if (frame == Frame())
        return;
    KeepFrame(frame);
    // What the widget reports from before this change has the old number, and is dropped.
    fGeometrySerial++;
    display::Call([this, frame] { fPeer->widget->Place(ToQRect(frame), fGeometrySerial); });
    ResizeViews(frame.Width(), frame.Height());
}

void BWindow::ResizeViews(float width, float height)
{
    std::vector<WidgetPlacement> places;
    fTop->SetFrame(BRect(0, 0, width, height), places);
    BView::Apply(places);
}

void BWindow::SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight)
{
    const BAutolock lock(this);
    if (minWidth > maxWidth || minHeight > maxHeight)
        return;
    fMinWidth = minWidth;
    fMaxWidth = maxWidth;
    fMinHeight = minHeight;
    fMaxHeight = maxHeight;
    // First the size, then the limits: told of them alone, the widget would cut itself, and its
    // report would look like the user's doing.
    Place(Limited(Frame()));
    display::Call([this] {
        fPeer->widget->SetLimits(QSize(PixelLimit(fMinWidth), PixelLimit(fMinHeight)),
            QSize(PixelLimit(fMaxWidth), PixelLimit(fMaxHeight)));
    });
}

// --- Views

void BWindow::AddChild(BView* child, BView* before)
{
    const BAutolock lock(this);
    fTop->AddChild(child, before);
}

int32 BWindow::CountChildren() const
{
    return fTop->CountChildren();
}

BView* BWindow::ChildAt(int32 index) const
{
    return fTop->ChildAt(index);
}

BView* BWindow::FindView(const char* name) const
{
    return fTop->FindView(name);
}

BView* BWindow::CurrentFocus() const
{
    return fFocus;
}

void BWindow::ViewDetached(BView* view)
{
    if (fFocus == view)
        fFocus = nullptr;
    if (fDefaultButton == view)
        fDefaultButton = nullptr;
}

void BWindow::SetDefaultButton(BButton* button)
{
    const BAutolock lock(this);
    BButton* before = fDefaultButton;
    fDefaultButton = button;
    if (before && before != button)
        before->ShowDefault(false);
    if (button)
        button->ShowDefault(true);
}

// --- Drawing

void BWindow::Flush() const
{
    const_cast<BWindow*>(this)->FlushDrawing();
}

void BWindow::Sync() const
{
    const_cast<BWindow*>(this)->SyncDrawing();
}

void BWindow::MessageHandled()
{
    FlushDrawing();
}

// For what keeps this thread from its messages, as BAlert::Go() does while it waits.
void BWindow::UpdateIfNeeded()
{
    if (find_thread(nullptr) != Thread())
        return;
    HandleUpdate();
    FlushDrawing();
}

// --- Input

namespace {

// Without the command key: all shortcuts have it, so it tells none from another.
constexpr uint32 kShortcutModifiers = B_SHIFT_KEY | B_CONTROL_KEY | B_OPTION_KEY;

uint32 FoldedKey(uint32 key)
{
    return key < 0x80 ? static_cast<uint32>(tolower(static_cast<int>(key))) : key;
}

int32 ShortcutId(uint32 key, uint32 modifiers)
{
    constexpr int kKeyBits = 21; // any Unicode character
    return static_cast<int32>((modifiers & kShortcutModifiers) << kKeyBits | FoldedKey(key));
}

} // namespace

void BWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
    if (handler == this) {
        if (!HandleServerMessage(message))
            BLooper::DispatchMessage(message, handler);
        return;
    }
    auto* view = dynamic_cast<BView*>(handler);
    if (!view || !view->HandleServerMessage(message))
        BLooper::DispatchMessage(message, handler);
}

void BWindow::MessageReceived(BMessage* message)
{
    BLooper::MessageReceived(message);
}

bool BWindow::QuitRequested()
{
    if ((fFlags & B_QUIT_ON_WINDOW_CLOSE) && be_app)
        be_app->PostMessage(B_QUIT_REQUESTED);
    return BLooper::QuitRequested();
}

bool BWindow::HandleServerMessage(BMessage* message)
{
    bool active = false;
    switch (message->what) {
        case _UPDATE_: HandleUpdate(); return true;
        case B_WINDOW_ACTIVATED:
            if (message->FindBool("active", &active) == B_OK)
                HandleActivated(active);
            return true;
        case B_WINDOW_MOVED: HandleMoved(message); return true;
        case B_WINDOW_RESIZED: HandleResized(message); return true;
        case B_KEY_DOWN: HandleKeyDown(message); return true;
        case kMsgShortcut: HandleShortcut(message); return true;
        default: return false;
    }
}

// --- Updates

void BWindow::HandleUpdate()
{
    fPeer->link->updatePosted = false; // first: what gets dirty from here on asks again
    UpdateViews(fTop.get());
}

void BWindow::UpdateViews(BView* view)
{
    // Taken off a hidden view as well: when it is shown, Qt exposes all of it again.
    const BRect dirty = view->fPeer ? view->fPeer->link->TakeDirty() : BRect();
    if (dirty.IsValid() && !view->IsHidden()) {
        const BRect rect = dirty.OffsetByCopy(view->fOrigin.x, view->fOrigin.y) & view->Bounds();
        if (rect.IsValid()) {
            view->BeginUpdate(rect);
            view->Draw(rect);
            view->EndUpdate();
        }
    }
    // By index: Draw() may add and remove views.
    for (int32 i = 0; i < view->CountChildren(); i++)
        UpdateViews(view->fChildren[static_cast<size_t>(i)]);
}

// --- What the user did to the window

void BWindow::HandleActivated(bool active)
{
    if (active == fActive)
        return;
    fActive = active;
    WindowActivated(active);
    fTop->TellActivated(active);
}

// A report older than the last change by the program says nothing about the present frame.
void BWindow::HandleMoved(BMessage* message)
{
    int32 serial = 0;
    BPoint where;
    message->FindInt32("serial", &serial);
    if (serial != fGeometrySerial || message->FindPoint("where", &where) != B_OK)
        return;
    KeepFrame(Frame().OffsetToCopy(where.x, where.y));
    FrameMoved(where);
}

void BWindow::HandleResized(BMessage* message)
{
    int32 serial = 0;
    int32 width = 0;
    int32 height = 0;
    message->FindInt32("serial", &serial);
    if (serial != fGeometrySerial || message->FindInt32("width", &width) != B_OK
        || message->FindInt32("height", &height) != B_OK)
        return;
    // The frame may have fractions of a pixel, which the widget has not.
    const QSize shown = ToQRect(Bounds()).size();
    if (shown.width() != width + 1 || shown.height() != height + 1) {
        const BPoint leftTop = Frame().LeftTop();
        const BPoint size(static_cast<float>(width), static_cast<float>(height));
        KeepFrame(BRect(leftTop, leftTop + size));
        ResizeViews(size.x, size.y);
    }
    FrameResized(Frame().Width(), Frame().Height());
}

// --- Keys

void BWindow::HandleKeyDown(BMessage* message)
{
    const char* bytes = nullptr;
    int32 modifiers = 0;
    if (message->FindString("bytes", &bytes) != B_OK || !*bytes)
        return;
    message->FindInt32("modifiers", &modifiers);
    if (!(modifiers & B_COMMAND_KEY)) {
        UnusedKeyDown(bytes, static_cast<int32>(strlen(bytes)));
        return;
    }
    // By messages, so that it comes behind what waits and QuitRequested() can refuse.
    if (bytes[0] == 'w' && !(fFlags & B_NOT_CLOSABLE))
        PostAlways(BMessenger(this, this), BMessage(B_QUIT_REQUESTED));
    else if (bytes[0] == 'q' && be_app)
        PostAlways(be_app_messenger, BMessage(B_QUIT_REQUESTED));
}

void BWindow::UnusedKeyDown(const char* bytes, int32)
{
    if (bytes[0] == B_ENTER && fDefaultButton && fDefaultButton->IsEnabled())
        fDefaultButton->Invoke();
}

// --- Shortcuts

void BWindow::AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target)
{
    auto shortcut = std::make_unique<WindowShortcut>();
    shortcut->key = FoldedKey(key);
    shortcut->modifiers = modifiers & kShortcutModifiers;
    shortcut->message.reset(message);
    if (target)
        shortcut->target = BMessenger(target);
    const BAutolock lock(this);
    SetShortcut(std::move(shortcut));
}

void BWindow::SetShortcut(std::unique_ptr<WindowShortcut> shortcut)
{
    const int32 id = ShortcutId(shortcut->key, shortcut->modifiers);
    display::Call([this, id, &shortcut] {
        fPeer->widget->AddKeys(id, ShortcutKeys(shortcut->key, shortcut->modifiers));
    });
    fShortcuts[id] = std::move(shortcut);
}

void BWindow::RemoveShortcut(uint32 key, uint32 modifiers)
{
    const BAutolock lock(this);
    const int32 id = ShortcutId(key, modifiers);
    if (fShortcuts.erase(id) > 0)
        display::Call([this, id] { fPeer->widget->RemoveKeys(id); });
}

void BWindow::AddMenuShortcut(BMenuItem* item)
{
    auto shortcut = std::make_unique<WindowShortcut>();
    shortcut->key = FoldedKey(static_cast<uint8>(item->fShortcut));
    shortcut->modifiers = item->fModifiers & kShortcutModifiers;
    shortcut->item = item;
    if (item->fShortcut != 0)
        SetShortcut(std::move(shortcut));
}

void BWindow::RemoveMenuShortcut(BMenuItem* item)
{
    // Only where they still are the item's keys: another may have taken them since.
    const uint32 key = static_cast<uint8>(item->fShortcut);
    const auto found = fShortcuts.find(ShortcutId(key, item->fModifiers));
    if (found != fShortcuts.end() && found->second->item == item)
        RemoveShortcut(key, item->fModifiers);
}

void BWindow::HandleShortcut(BMessage* message)
{
    int32 id = 0;
    message->FindInt32("shortcut", &id);
    const auto found = fShortcuts.find(id);
    if (found == fShortcuts.end())
        return;
    const WindowShortcut& shortcut = *found->second;
    if (shortcut.item) {
        // Asked now: the program may have disabled it since the keys were pressed.
        if (shortcut.item->IsEnabled())
            shortcut.item->Chosen();
        return;
    }
    if (!shortcut.message)
        return;
    BMessage copy(*shortcut.message);
    copy.AddInt64("when", system_time());
    const BHandler* focus = fFocus ? static_cast<BHandler*>(fFocus) : this;
    PostAlways(shortcut.target.IsValid() ? shortcut.target : BMessenger(focus, this), copy);
}
