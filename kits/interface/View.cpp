#include "View.h"

#include "Check.h"
#include "drawing/DrawContext.h"
#include "MessageDelivery.h"
#include "ScrollBar.h"
#include "server/Accessibility.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "server/ViewWidget.h"
#include "server/WindowWidget.h"
#include "Window.h"

#include <QTextDocument>

#include <algorithm>
#include <cstdio>

BView::BView(BRect frame, const char* name, uint32 resizeMode, uint32 flags)
    : BHandler(name), fFrame(frame), fResizingMode(resizeMode), fFlags(flags),
      fDraw(std::make_unique<DrawState>())
{
}

BView::~BView()
{
    RemoveSelf();
    for (BScrollBar* bar : { fHorizontalBar, fVerticalBar }) {
        if (bar)
            bar->fTarget = nullptr;
    }
    // Each leaves the list first: without a parent its own RemoveSelf() does nothing.
    while (!fChildren.empty()) {
        BView* child = fChildren.back();
        fChildren.pop_back();
        child->fParent = nullptr;
        delete child;
    }
}

#ifdef TARVEX_CHECKS
void BView::CheckLocked() const
{
    TARVEX_CHECK(!fWindow || fWindow->IsLocked()) << "view <" << (Name() ? Name() : "") << ">";
}
#endif

// --- The tree

void BView::AddChild(BView* child, BView* before)
{
    CheckLocked();
    if (child->fParent || child->fWindow || child == this) {
        fprintf(stderr, "View <%s> already has a parent\n", child->Name() ? child->Name() : "");
        return;
    }
    const auto place =
        before ? std::find(fChildren.begin(), fChildren.end(), before) : fChildren.end();
    fChildren.insert(place, child);
    child->fParent = this;
    if (fWindow)
        child->AttachTree(fWindow);
}

void BView::AttachTree(BWindow* window)
{
    fWindow = window;
    window->AddHandler(this);
    // What a view does not answer goes up the tree to the window. The top view is the window's own
    // and answers nothing, so it is left out.
    SetNextHandler(fParent->fIsTop ? static_cast<BHandler*>(window) : fParent);
    MakePeer();
    AttachedToWindow();
    for (int32 i = 0; fWindow && i < CountChildren(); i++) { // the hooks may change the tree
        if (!fChildren[i]->fWindow)
            fChildren[i]->AttachTree(window);
    }
    if (fWindow)
        AllAttached();
}

bool BView::RemoveChild(BView* child)
{
    CheckLocked();
    const auto place = std::find(fChildren.begin(), fChildren.end(), child);
    if (place == fChildren.end())
        return false;
    if (fWindow)
        child->DetachTree();
    // Looked for again: the hooks of going may have changed the list.
    fChildren.erase(std::find(fChildren.begin(), fChildren.end(), child));
    child->fParent = nullptr;
    return true;
}

bool BView::RemoveSelf()
{
    return fParent && fParent->RemoveChild(this);
}

// First all hooks: in them the whole tree is still in the window and may ask its widgets.
void BView::DetachTree()
{
    CallDetached();
    QWidget* widget = fPeer->widget;
    LeaveWindow();
    display::Call([widget] { delete widget; }); // and all below it
}

void BView::CallDetached()
{
    DetachedFromWindow();
    for (BView* child : fChildren)
        child->CallDetached();
    AllDetached();
}

void BView::LeaveWindow()
{
    for (BView* child : fChildren)
        child->LeaveWindow();
    WidgetGoes();
    DetachDrawing();
    fWindow->ViewDetached(this);
    fWindow->RemoveHandler(this);
    fPeer.reset();
    fWindow = nullptr;
}

BView* BView::ChildAt(int32 index) const
{
    return index >= 0 && index < CountChildren() ? fChildren[index] : nullptr;
}

BView* BView::Sibling(int32 distance) const
{
    if (!fParent)
        return nullptr;
    const auto& all = fParent->fChildren;
    const auto self = std::find(all.begin(), all.end(), this);
    return fParent->ChildAt(static_cast<int32>(self - all.begin()) + distance);
}

BView* BView::NextSibling() const
{
    return Sibling(1);
}

BView* BView::Parent() const
{
    return fParent && !fParent->fIsTop ? fParent : nullptr;
}

BView* BView::FindView(const char* name) const
{
    if (!name)
        return nullptr;
    if (!fIsTop && Name() && strcmp(Name(), name) == 0)
        return const_cast<BView*>(this);
    for (const BView* child : fChildren) {
        if (BView* found = child->FindView(name))
            return found;
    }
    return nullptr;
}

namespace {

// Qt would take a tip that looks like markup, as a text from a file may, for markup: an invisible
// sign that joins words makes its first tag none.
QString PlainTip(const std::string& text)
{
    QString tip = QString::fromStdString(text);
    if (Qt::mightBeRichText(tip))
        tip.insert(tip.indexOf('<') + 1, QChar(0x2060));
    return tip;
}

} // namespace

// --- The widget

void BView::MakePeer()
{
    fPeer = std::make_unique<ViewPeer>();
    fPeer->link =
        std::make_shared<ViewLink>(fWindow->fPeer->link, BMessenger(this, fWindow), fFlags);
    fPeer->parent = fParent->fPeer->widget;
    const BView* behind = NextSibling();
    const ViewPeer* next = behind ? behind->fPeer.get() : nullptr;
    const bool fills = FillsBackground();
    display::Call([this, next, fills] {
        MakeWidget(*fPeer);
        QWidget* widget = fPeer->widget;
        widget->setGeometry(Placement().geometry);
        // A view that draws itself takes its font from fDraw, with each string.
        if (!fPeer->isPlain)
            widget->setFont(ToQFont(fDraw->font));
        if (fDraw->viewColor != B_TRANSPARENT_COLOR)
            ShowViewColor(*widget, ToQColor(fDraw->viewColor), fills);
        if (fHasLinkPointer)
            widget->setCursor(Qt::PointingHandCursor);
        widget->setToolTip(PlainTip(fToolTip));
        // After the tool tip, which may be all that there is for a name.
        NameForReaders(*widget);
        // A later view lies above an earlier one. Qt would put this one, the newest, on top.
        if (next)
            widget->stackUnder(next->widget);
        widget->setVisible(fHidden == 0);
    });
}

void BView::SetToolTip(const char* text)
{
    CheckLocked();
    fToolTip = text ? text : "";
    if (!fPeer)
        return;
    display::Call([this] {
        fPeer->widget->setToolTip(PlainTip(fToolTip));
        NameForReaders(*fPeer->widget);
    });
}

void BView::ShowLinkPointer()
{
    CheckLocked();
    fHasLinkPointer = true;
    if (fPeer)
        display::Call([this] { fPeer->widget->setCursor(Qt::PointingHandCursor); });
}

void BView::MakeWidget(ViewPeer& peer)
{
    peer.widget = new ViewWidget(peer.link, peer.parent);
    peer.isPlain = true;
    Equip(peer, Name(), ViewEvents::Kind::kView);
}

void BView::WidgetChanged(BMessage*) { }

void BView::GetWidgetSize(float* width, float* height)
{
    // Layouts ask before there is a window, so outside of one a widget is made just to be asked.
    const QSize size = display::Call([this] {
        if (fPeer)
            return fPeer->widget->sizeHint();
        ViewPeer trial; // outside a window: one that is seen by nobody
        trial.link =
            std::make_shared<ViewLink>(std::make_shared<WindowLink>(), BMessenger(), fFlags);
        MakeWidget(trial);
        const std::unique_ptr<QWidget> widget(trial.widget);
        widget->setFont(ToQFont(fDraw->font));
        return widget->sizeHint();
    });
    if (width)
        *width = size.isValid() ? static_cast<float>(size.width() - 1) : fFrame.Width();
    if (height)
        *height = size.isValid() ? static_cast<float>(size.height() - 1) : fFrame.Height();
}

bool BView::FillsBackground() const
{
    if (fDraw->viewColor == B_TRANSPARENT_COLOR)
        return false;
    // Where the nearest coloured view below has the same colour there is nothing to fill.
    const BView* below = fParent;
    while (below && below->fDraw->viewColor == B_TRANSPARENT_COLOR)
        below = below->fParent;
    return !below || below->fDraw->viewColor != fDraw->viewColor;
}

void BView::ViewColorChanged()
{
    CheckLocked();
    if (!fPeer)
        return;
    display::Call([this, fills = FillsBackground()] {
        ShowViewColor(*fPeer->widget, ToQColor(fDraw->viewColor), fills);
    });
    for (BView* child : fChildren) // what had the same colour now differs, and the other way round
        child->ViewColorChanged();
}

void BView::TakeParentsColor()
{
    if (Parent() && ViewColor() == B_TRANSPARENT_COLOR)
        SetViewColor(Parent()->ViewColor());
}

void BView::FontChanged()
{
    CheckLocked();
    if (fPeer && !fPeer->isPlain)
        display::Call([this] { fPeer->widget->setFont(ToQFont(fDraw->font)); });
}

NativeSurface BView::MakeNative()
{
    CheckLocked();
    if (!fPeer || !fPeer->isPlain || IsHidden())
        return {};
    // Qt paints nothing into the X window that the view gets: children would not be seen.
    TARVEX_CHECK(fChildren.empty())
        << "view <" << (Name() ? Name() : "") << "> draws and has children";
    return display::Call(
        [this] { return static_cast<ViewWidget*>(fPeer->widget)->BecomeNative(); });
}

// --- State

void BView::Show()
{
    CheckLocked();
    if (fHidden > 0 && --fHidden == 0 && fPeer)
        display::Call([this] { fPeer->widget->setVisible(true); });
}

void BView::Hide()
{
    CheckLocked();
    if (++fHidden == 1 && fPeer)
        display::Call([this] { fPeer->widget->setVisible(false); });
}

bool BView::IsHidden() const
{
    for (const BView* view = this; view; view = view->fParent) {
        if (view->fHidden > 0)
            return true;
    }
    return fWindow && fWindow->IsHidden();
}

void BView::SetFlags(uint32 flags)
{
    CheckLocked();
    fFlags = flags;
    // The link has a copy: the server's thread looks at the flags and must not touch the view.
    if (fPeer)
        fPeer->link->flags = flags;
}

void BView::Invalidate()
{
    Invalidate(Bounds());
}

void BView::Invalidate(BRect rect)
{
    CheckLocked();
    if (!fPeer)
        return;
    // Links and widgets count from the widget's left top, wherever the view is scrolled.
    rect = (rect & Bounds()).OffsetByCopy(-fOrigin.x, -fOrigin.y);
    // Another widget than a plain one knows itself when to paint.
    if (fPeer->isPlain)
        fPeer->link->AddDirty(rect); // which leaves out what is not valid
}

// --- Geometry

namespace {

// A mode is four hexadecimal digits, for the view's top, left, bottom and right edge, each naming
// the edge of the parent that this one follows. The parent's left top is the fixed point: 1, its
// top, and 2, its left, move nothing, and 0 follows none.
constexpr uint32 kBottom = 3;
constexpr uint32 kRight = 4;
constexpr uint32 kMiddle = 5;

float Moved(uint32 mode, int digit, float delta)
{
    const uint32 edge = mode >> (4 * digit) & 0xf;
    if (edge == kMiddle)
        return delta / 2;
    return edge == kBottom || edge == kRight ? delta : 0;
}

// frame after its parent has become dx wider and dy higher, by the B_FOLLOW_ mode. Nothing is
// rounded, so that growing and shrinking by the same amounts gives the old frame; a frame that
// does not fit becomes invalid and comes back when the parent grows again.
BRect FollowParent(BRect frame, uint32 mode, float dx, float dy)
{
    frame.top += Moved(mode, 3, dy);
    frame.left += Moved(mode, 2, dx);
    frame.bottom += Moved(mode, 1, dy);
    frame.right += Moved(mode, 0, dx);
    return frame;
}

} // namespace

BRect BView::Bounds() const
{
    return fFrame.OffsetToCopy(fOrigin.x, fOrigin.y);
}

void BView::MoveTo(BPoint where)
{
    CheckLocked();
    // Asked here, since SetFrame() hands over a place even where nothing changed: layouts move many
    // views to where they are, and each Call waits.
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
    const bool isTold = fPeer && (fFlags & B_FRAME_EVENTS);
    if (isTold && moved)
        fPeer->link->PostLatest(BMessage(B_VIEW_MOVED));
    if (dx == 0 && dy == 0)
        return;
    if (isTold)
        fPeer->link->PostLatest(BMessage(B_VIEW_RESIZED));
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
    // Scrolling moves what is in a view and not the view: its bounds begin at fOrigin.
    *point += fFrame.LeftTop() - fOrigin;
}

BPoint BView::ConvertToParent(BPoint point) const
{
    ConvertToParent(&point);
    return point;
}

// The top view lies at (0, 0) of the window and never scrolls: the sum is in window coordinates.
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
