#include "Window.h"

#include "Autolock.h"
#include "Button.h"
#include "Check.h"
#include "drawing/DrawConnection.h"
#include "drawing/DrawState.h"
#include "LeafLock.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/WindowShortcut.h"
#include "server/WindowWidget.h"
#include "View.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

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
    fTop->CallDetached();
    fTop->LeaveWindow();
    fConnection.reset();
    display::Call([widget = fPeer->widget] { delete widget; });
    fTop.reset();
}

// --- Showing

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
        display::Call([this] {
            fPeer->widget->Appear();
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

void BWindow::UpdateIfNeeded()
{
    if (find_thread(nullptr) != Thread())
        return;
    HandleUpdate();
    FlushDrawing();
}
