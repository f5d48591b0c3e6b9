#include "Message.h"
#include "ScrollBar.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "View.h"
#include "Window.h"

#include <cstring>
#include <utility>

namespace {

// The least way that a range has to go so that it lies between two bounds, its beginning at least.
float WayBetween(float first, float last, float least, float most)
{
    if (first < least || last - first > most - least)
        return first - least;
    return last > most ? last - most : 0;
}

// The views around this one that have scroll bars scroll as far as needed.
void ScrollIntoSight(const BView& view)
{
    constexpr float kAround = 6; // so that it does not stick to the edge
    BRect place = view.Bounds().InsetByCopy(-kAround, -kAround);
    const BView* inner = &view;
    for (BView* outer = view.Parent(); outer; inner = outer, outer = outer->Parent()) {
        place = BRect(
            inner->ConvertToParent(place.LeftTop()), inner->ConvertToParent(place.RightBottom()));
        const BRect seen = outer->Bounds();
        if (BScrollBar* bar = outer->ScrollBar(B_VERTICAL))
            bar->SetValue(
                bar->Value() + WayBetween(place.top, place.bottom, seen.top, seen.bottom));
        if (BScrollBar* bar = outer->ScrollBar(B_HORIZONTAL))
            bar->SetValue(
                bar->Value() + WayBetween(place.left, place.right, seen.left, seen.right));
    }
}

// Whether a bar, null for none, has any way left in the direction of the wheel's notches.
bool CanTurn(const BScrollBar* bar, float notches)
{
    float min = 0;
    float max = 0;
    if (bar)
        bar->GetRange(&min, &max);
    return bar && (notches > 0 ? bar->Value() < max : bar->Value() > min);
}

} // namespace

// A message of the display server or of the view itself that a hook answers; false for others.
bool BView::HandleServerMessage(BMessage* message)
{
    switch (message->what) {
        case B_MOUSE_DOWN:
        case B_MOUSE_UP:
        case B_MOUSE_MOVED: HandleMouse(message); return true;
        case B_KEY_DOWN: HandleKeyDown(message); return true;
        case kMsgFocused: HandleFocused(); return true;
        case kMsgWidgetChanged: WidgetChanged(message); return true;
        case B_VIEW_MOVED: FrameMoved(fFrame.LeftTop()); return true;
        case B_VIEW_RESIZED: FrameResized(fFrame.Width(), fFrame.Height()); return true;
        default: return false;
    }
}

void BView::HandleMouse(BMessage* message)
{
    BPoint where;
    message->FindPoint("where", &where);
    // The widget knows nothing of scrolling. The message gets the view's coordinates too, as a hook
    // may read it with CurrentMessage().
    where += fOrigin;
    message->RemoveName("where");
    message->AddPoint("where", where);
    int32 transit = B_INSIDE_VIEW;
    switch (message->what) {
        case B_MOUSE_DOWN: MouseDown(where); break;
        case B_MOUSE_UP: MouseUp(where); break;
        default:
            message->FindInt32("be:transit", &transit);
            MouseMoved(where, static_cast<uint32>(transit), nullptr);
    }
}

void BView::HandleKeyDown(BMessage* message)
{
    const char* bytes = nullptr;
    if (message->FindString("bytes", &bytes) == B_OK && *bytes)
        KeyDown(bytes, static_cast<int32>(strlen(bytes)));
}

void BView::KeyDown(const char* bytes, int32 numBytes)
{
    if (fWindow)
        fWindow->UnusedKeyDown(bytes, numBytes);
}

// The user has moved the keyboard here. MakeFocus() tells subclasses and keeps the widgets alone,
// since the user may have gone on meanwhile.
void BView::HandleFocused()
{
    BWindow* window = fWindow;
    if (IsFocus())
        return;
    window->fFocusIsShown = true;
    MakeFocus(true);
    window->fFocusIsShown = false;
}

void BView::TellActivated(bool active)
{
    WindowActivated(active);
    for (int32 i = 0; i < CountChildren(); i++)
        ChildAt(i)->TellActivated(active);
}

void BView::MakeFocus(bool focus)
{
    CheckLocked();
    if (!fWindow || focus == IsFocus())
        return;
    BView* before = fWindow->fFocus;
    // The old one hears of its loss first, so that no two views take themselves for the focus. Its
    // widget has the keyboard until this one's takes it: what is typed in between would be lost.
    if (focus && before) {
        const bool wasShown = std::exchange(fWindow->fFocusIsShown, true);
        before->MakeFocus(false);
        fWindow->fFocusIsShown = wasShown;
    }
    fWindow->fFocus = focus ? this : nullptr;
    if (focus)
        ScrollIntoSight(*this);
    if (fWindow->fFocusIsShown)
        return;
    display::Call([this, focus] {
        if (focus)
            fPeer->widget->setFocus();
        else
            fPeer->widget->clearFocus();
    });
}

bool BView::IsFocus() const
{
    return fWindow && fWindow->fFocus == this;
}

bool BView::HasKeyboard() const
{
    return IsFocus() && fWindow->IsActive();
}

void BView::MessageReceived(BMessage* message)
{
    if (message->what != B_MOUSE_WHEEL_CHANGED)
        return BHandler::MessageReceived(message);
    ScrollByWheel(*message, B_HORIZONTAL, "be:wheel_delta_x");
    ScrollByWheel(*message, B_VERTICAL, "be:wheel_delta_y");
}

// Of this view and those around it the first that can go on in that direction scrolls.
void BView::ScrollByWheel(const BMessage& message, orientation direction, const char* field)
{
    constexpr float kStepsPerNotch = 3;
    float notches = 0;
    message.FindFloat(field, &notches);
    const BView* view = this;
    while (view && !CanTurn(view->ScrollBar(direction), notches))
        view = view->fParent;
    if (!view)
        return;
    BScrollBar* bar = view->ScrollBar(direction);
    float step = 0;
    bar->GetSteps(&step, nullptr);
    bar->SetValue(bar->Value() + notches * step * kStepsPerNotch);
}
