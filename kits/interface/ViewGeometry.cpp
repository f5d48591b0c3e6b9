#include "FollowMode.h"
#include "MessageDelivery.h"
#include "ScrollBar.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewWidget.h"
#include "View.h"
#include "Window.h"

BRect BView::Bounds() const
{
    return fFrame.OffsetToCopy(fOrigin.x, fOrigin.y);
}

void BView::MoveTo(BPoint where)
{
    CheckLocked();
    if (where == fFrame.LeftTop())
        return;
    std::vector<WidgetPlacement> places;
    SetFrame(fFrame.OffsetToCopy(where.x, where.y), places);
    Apply(places);
}

void BView::ResizeTo(float width, float height)
{
    CheckLocked();
    std::vector<WidgetPlacement> places;
    SetFrame(BRect(fFrame.left, fFrame.top, fFrame.left + width, fFrame.top + height), places);
    Apply(places);
}

// Widgets are not placed here but noted in places, those of the whole tree: one Call for all costs
// one wait, and the user sees them move together.
void BView::SetFrame(BRect frame, std::vector<WidgetPlacement>& places)
{
    const float dx = frame.Width() - fFrame.Width();
    const float dy = frame.Height() - fFrame.Height();
    const bool moved = frame.LeftTop() != fFrame.LeftTop();
    fFrame = frame;
    if (fPeer && !fIsTop) // the top view's widget is the window
        places.push_back(Placement());
    // The hooks are called by messages, when the whole tree has its new places; while a window is
    // dragged larger, only for the last of the sizes that wait.
    if (fPeer && moved && (fFlags & B_FRAME_EVENTS)) {
        BMessage message(B_VIEW_MOVED);
        message.AddPoint("where", frame.LeftTop());
        fPeer->link->PostLatest(message);
    }
    if (dx == 0 && dy == 0)
        return;
    if (fPeer && (fFlags & B_FRAME_EVENTS)) {
        BMessage message(B_VIEW_RESIZED);
        message.AddFloat("width", frame.Width());
        message.AddFloat("height", frame.Height());
        fPeer->link->PostLatest(message);
    }
    if (fFlags & B_FULL_UPDATE_ON_RESIZE)
        Invalidate();
    for (BView* child : fChildren) {
        const BRect after = FollowParent(child->fFrame, child->fResizingMode, dx, dy);
        if (after != child->fFrame)
            child->SetFrame(after, places);
    }
}

// Widgets know nothing of scrolling: when the parent scrolls, its children's widgets move.
WidgetPlacement BView::Placement() const
{
    const BPoint origin = fParent ? fParent->fOrigin : B_ORIGIN;
    return { fPeer->widget, ToQRect(fFrame.OffsetByCopy(-origin.x, -origin.y)) };
}

void BView::Apply(const std::vector<WidgetPlacement>& places)
{
    if (places.empty())
        return;
    display::Call([&places] {
        for (const WidgetPlacement& place : places)
            place.widget->setGeometry(place.geometry);
        // X windows of views lie in the window's own, and do not follow the widgets between.
        ViewWidget::PlaceNatives(places.front().widget->window());
    });
}

void BView::GetPreferredSize(float* width, float* height)
{
    if (width)
        *width = fFrame.Width();
    if (height)
        *height = fFrame.Height();
}

void BView::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}

void BView::ConvertToParent(BPoint* point) const
{
    *point += fFrame.LeftTop() - fOrigin;
}

BPoint BView::ConvertToParent(BPoint point) const
{
    ConvertToParent(&point);
    return point;
}

BPoint BView::OffsetInWindow() const
{
    BPoint offset;
    for (const BView* view = this; view; view = view->fParent)
        view->ConvertToParent(&offset);
    return offset;
}

BPoint BView::ConvertToScreen(BPoint point) const
{
    return fWindow ? fWindow->ConvertToScreen(point + OffsetInWindow()) : point;
}

BRect BView::ConvertToScreen(BRect rect) const
{
    return BRect(ConvertToScreen(rect.LeftTop()), ConvertToScreen(rect.RightBottom()));
}

// --- Scrolling

void BView::ScrollTo(BPoint where)
{
    CheckLocked();
    if (where == fOrigin)
        return;
    fOrigin = where;
    Invalidate();
    std::vector<WidgetPlacement> places;
    for (const BView* child : fChildren) {
        if (child->fPeer)
            places.push_back(child->Placement());
    }
    Apply(places);
    // The bars call back, and that finds the view scrolled already.
    if (fHorizontalBar)
        fHorizontalBar->SetValue(where.x);
    if (fVerticalBar)
        fVerticalBar->SetValue(where.y);
}

BScrollBar* BView::ScrollBar(orientation direction) const
{
    return direction == B_HORIZONTAL ? fHorizontalBar : fVerticalBar;
}
