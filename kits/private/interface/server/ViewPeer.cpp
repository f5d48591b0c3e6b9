#include "server/ViewPeer.h"

#include "AppDefs.h"
#include "InterfaceDefs.h"
#include "LeafLock.h"
#include "Message.h"
#include "MessageDelivery.h"
#include "server/Convert.h"

#include <QAbstractScrollArea>
#include <QCursor>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

ViewLink::ViewLink(std::shared_ptr<WindowLink> window, const BMessenger& view, uint32 viewFlags)
    : flags(viewFlags), fWindow(std::move(window)), fView(view)
{
}

void ViewLink::Post(const BMessage& message) const
{
    PostAlways(fView, message);
}

void ViewLink::PostLatest(const BMessage& message) const
{
    ::PostLatest(fView, message);
}

void ViewLink::AddDirty(BRect rect)
{
    if (!(flags & B_WILL_DRAW) || !rect.IsValid())
        return;
    {
        const LeafLock lock(fLock);
        fDirty = fDirty.IsValid() ? fDirty | rect : rect;
    }
    // One message for the whole window, however many of its views ask; outside the leaf's lock,
    // since posting takes others.
    if (!fWindow->updatePosted.exchange(true))
        PostAlways(fWindow->window, BMessage(_UPDATE_));
}

BRect ViewLink::TakeDirty()
{
    const LeafLock lock(fLock);
    const BRect dirty = fDirty;
    fDirty = BRect();
    return dirty;
}

// --- Input

ViewEvents::ViewEvents(std::shared_ptr<ViewLink> link, Kind kind, QWidget* widget)
    : QObject(widget), fLink(std::move(link)), fKind(kind), fWidget(widget)
{
    fWidget->installEventFilter(this);
    fWidget->setMouseTracking(true);
    // The mouse is over its viewport, which is a widget of its own.
    if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) {
        area->viewport()->installEventFilter(this);
        area->viewport()->setMouseTracking(true);
    }
}

bool ViewEvents::eventFilter(QObject* object, QEvent* event)
{
    FollowTip(*static_cast<QWidget*>(object), *event);
    // MakeFocus() knows already of what it has done.
    if (event->type() == QEvent::FocusIn
        && static_cast<QFocusEvent*>(event)->reason() != Qt::OtherFocusReason)
        fLink->Post(BMessage(kMsgFocused));
    return fKind == Kind::kView && HandleForView(event);
}

// A view that has a tip for each place learns late where the pointer is, and Qt asks once, when
// that has come to rest.
void ViewEvents::FollowTip(const QWidget& widget, const QEvent& event)
{
    switch (event.type()) {
        case QEvent::ToolTip: {
            const auto& asked = static_cast<const QHelpEvent&>(event);
            if (widget.childAt(asked.pos()))
                return; // that one's tip is shown
            fRest = asked.globalPos();
            fTip = fWidget->toolTip();
            break;
        }
        case QEvent::ToolTipChange: {
            const bool isShown = QToolTip::isVisible() && QToolTip::text() == fTip;
            if (!fRest || fWidget->toolTip() == fTip || (!fTip.isEmpty() && !isShown))
                return;
            fTip = fWidget->toolTip();
            QToolTip::showText(*fRest, fTip, fWidget);
            break;
        }
        case QEvent::MouseMove:
        case QEvent::MouseButtonPress:
        case QEvent::Wheel:
        case QEvent::Leave: fRest.reset(); break;
        default: break;
    }
}

bool ViewEvents::HandleForView(QEvent* event)
{
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            fLink->Post(MouseMessage(B_MOUSE_DOWN, *static_cast<QMouseEvent*>(event)));
            return true;
        case QEvent::MouseButtonDblClick:
            fLink->Post(MouseMessage(B_MOUSE_DOWN, *static_cast<QMouseEvent*>(event), 2));
            return true;
        case QEvent::MouseButtonRelease:
            fLink->Post(MouseMessage(B_MOUSE_UP, *static_cast<QMouseEvent*>(event)));
            return true;
        case QEvent::MouseMove: MouseMoved(*static_cast<QMouseEvent*>(event)); return true;
        case QEvent::Enter: EnteredOrLeft(B_ENTERED_VIEW); break;
        case QEvent::Leave: EnteredOrLeft(B_EXITED_VIEW); break;
        case QEvent::Wheel:
            fLink->Post(WheelMessage(*static_cast<QWheelEvent*>(event)));
            return true;
        case QEvent::KeyPress: return KeyPressed(*static_cast<QKeyEvent*>(event));
        default: break;
    }
    return false;
}

void ViewEvents::MouseMoved(const QMouseEvent& event)
{
    const bool isInside = fWidget->rect().contains(event.position().toPoint());
    fLink->PostLatest(MovedMessage(FromQPoint(event.position()), FromQPoint(event.globalPosition()),
        ButtonBits(event.buttons()), isInside ? B_INSIDE_VIEW : B_OUTSIDE_VIEW));
}

void ViewEvents::EnteredOrLeft(int32 transit)
{
    const QPoint screenWhere = QCursor::pos();
    fLink->Post(MovedMessage(FromQPoint(fWidget->mapFromGlobal(screenWhere)),
        FromQPoint(screenWhere), ButtonBits(QGuiApplication::mouseButtons()), transit));
}

// The command key's combinations and keys for a view above go on to the window; Tab leaves the
// view.
bool ViewEvents::KeyPressed(const QKeyEvent& event)
{
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    if (!fWidget->hasFocus() || isTab || (event.modifiers() & Qt::ControlModifier))
        return false;
    const BMessage message = KeyMessage(event);
    if (message.HasString("bytes"))
        fLink->Post(message);
    return true;
}

void Equip(ViewPeer& peer, const char* name, ViewEvents::Kind kind)
{
    QWidget* widget = peer.widget;
    widget->setObjectName(QString::fromUtf8(name));
    const bool isNavigable = (peer.link->flags & B_NAVIGABLE) != 0;
    if (kind == ViewEvents::Kind::kView)
        widget->setFocusPolicy(isNavigable ? Qt::TabFocus : Qt::NoFocus);
    else if (!isNavigable)
        widget->setFocusPolicy(Qt::NoFocus);
    new ViewEvents(peer.link, kind, widget);
}
