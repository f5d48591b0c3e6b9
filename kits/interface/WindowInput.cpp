#include "Application.h"
#include "Autolock.h"
#include "Button.h"
#include "MenuItem.h"
#include "MessageDelivery.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ServerMessages.h"
#include "server/WindowShortcut.h"
#include "server/WindowWidget.h"
#include "View.h"
#include "Window.h"

#include <cctype>
#include <cstring>

namespace {

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
    const BRect dirty = view->fPeer ? view->fPeer->link->TakeDirty() : BRect();
    if (dirty.IsValid() && !view->IsHidden()) {
        const BRect rect = dirty.OffsetByCopy(view->fOrigin.x, view->fOrigin.y) & view->Bounds();
        if (rect.IsValid()) {
            view->BeginUpdate(rect);
            view->Draw(rect);
            view->EndUpdate();
        }
    }
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
    if (modifiers & B_COMMAND_KEY)
        HandleCommandKey(bytes[0]);
    else
        UnusedKeyDown(bytes, static_cast<int32>(strlen(bytes)));
}

void BWindow::HandleCommandKey(char key)
{
    if (key == 'w' && !(fFlags & B_NOT_CLOSABLE))
        PostAlways(BMessenger(this, this), BMessage(B_QUIT_REQUESTED));
    else if (key == 'q' && be_app)
        PostAlways(be_app_messenger, BMessage(B_QUIT_REQUESTED));
}

bool BWindow::UnusedKeyDown(const char* bytes, int32)
{
    if (bytes[0] != B_ENTER || !fDefaultButton || !fDefaultButton->IsEnabled())
        return false;
    fDefaultButton->Invoke();
    return true;
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
