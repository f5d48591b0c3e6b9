#include "server/WindowWidget.h"

#include "drawing/XcbReply.h"
#include "Entry.h"
#include "InterfaceDefs.h"
#include "MessageDelivery.h"
#include "server/Convert.h"
#include "server/ViewPeer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QResizeEvent>
#include <QWidget>
#include <QWindow>
#include <xcb/xcb.h>

#include <bit>
#include <cstring>
#include <QtGui/qguiapplication_platform.h>

// --- What Qt does not tell the window manager about a window

namespace {

// The hints of Motif, which window managers still follow.
struct MotifHints {
    uint32 flags;
    uint32 functions;
    uint32 decorations;
    int32 inputMode;
    uint32 status;
};

// Of the five words only those count that flags names.
constexpr uint32 kHasFunctions = 1;
// Without bit 0, which would make the others mean what the user may not do.
constexpr struct {
    uint32 flag;
    uint32 function;
} kFunctions[] = {
    { B_NOT_RESIZABLE, 1 << 1 },
    { B_NOT_MOVABLE, 1 << 2 },
    { B_NOT_MINIMIZABLE, 1 << 3 },
    { B_NOT_ZOOMABLE, 1 << 4 },
    { B_NOT_CLOSABLE, 1 << 5 },
};

// Qt's own: what is set here must come after what Qt has set, not before.
xcb_connection_t* Connection()
{
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t Atom(xcb_connection_t* connection, const char* name)
{
    const auto cookie =
        xcb_intern_atom(connection, false, static_cast<uint16_t>(strlen(name)), name);
    const auto reply = MakeReply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

// What the user may do with the window, by its B_NOT_... flags.
void SetFunctions(const QWidget& window, uint32 flags)
{
    xcb_connection_t* connection = Connection();
    if (!connection)
        return;
    const xcb_window_t id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t atom = Atom(connection, "_MOTIF_WM_HINTS");
    // Qt has set the decorations there, which stay.
    MotifHints hints {};
    const auto old = MakeReply(xcb_get_property_reply(connection,
        xcb_get_property(connection, false, id, atom, atom, 0, sizeof hints / 4), nullptr));
    if (old && xcb_get_property_value_length(old.get()) == sizeof hints)
        memcpy(&hints, xcb_get_property_value(old.get()), sizeof hints);
    hints.flags |= kHasFunctions;
    hints.functions = 0;
    for (const auto& row : kFunctions) {
        if (!(flags & row.flag))
            hints.functions |= row.function;
    }
    xcb_change_property(
        connection, XCB_PROP_MODE_REPLACE, id, atom, atom, 32, sizeof hints / 4, &hints);
}

} // namespace

// --- The widget

WindowWidget::WindowWidget(std::shared_ptr<WindowLink> link) : fLink(std::move(link))
{
    setFocusPolicy(Qt::NoFocus);
    setAcceptDrops(true);
    setAttribute(Qt::WA_KeyboardFocusChange); // the focus is seen before Tab was ever pressed
}

namespace {

Qt::WindowFlags TypeFor(window_look look, window_feel feel)
{
    switch (look) {
        case B_NO_BORDER_WINDOW_LOOK:
        case B_BORDERED_WINDOW_LOOK: return Qt::Window | Qt::FramelessWindowHint;
        case B_FLOATING_WINDOW_LOOK: return Qt::Tool;
        case B_MODAL_WINDOW_LOOK: return Qt::Dialog;
        default: return feel == B_NORMAL_WINDOW_FEEL ? Qt::Window : Qt::Dialog;
    }
}

Qt::WindowModality ModalityFor(window_feel feel)
{
    const bool isModal = feel == B_MODAL_APP_WINDOW_FEEL || feel == B_MODAL_ALL_WINDOW_FEEL
        || feel == B_MODAL_SUBSET_WINDOW_FEEL;
    return isModal ? Qt::ApplicationModal : Qt::NonModal;
}

// B_SIMPLE_DATA with "refs" of the files of this machine that are dragged; without others.
BMessage DroppedFiles(const QMimeData& data)
{
    BMessage message(B_SIMPLE_DATA);
    for (const QUrl& url : data.urls()) {
        entry_ref ref;
        const QByteArray path = QFile::encodeName(url.toLocalFile());
        if (url.isLocalFile() && get_ref_for_path(path, &ref) == B_OK)
            message.AddRef("refs", &ref);
    }
    return message;
}

} // namespace

void WindowWidget::SetKind(window_look look, window_feel feel, uint32 flags)
{
    const bool wasVisible = isVisible();
    // Named one by one: without this hint Qt gives a window the buttons it finds usual. Any of them
    // would bring a title bar with it.
    Qt::WindowFlags hints = TypeFor(look, feel) | Qt::CustomizeWindowHint;
    if (!(hints & Qt::FramelessWindowHint)) {
        hints |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
        if (!(flags & B_NOT_CLOSABLE))
            hints |= Qt::WindowCloseButtonHint;
        if (!(flags & B_NOT_MINIMIZABLE))
            hints |= Qt::WindowMinimizeButtonHint;
        if (!(flags & B_NOT_ZOOMABLE))
            hints |= Qt::WindowMaximizeButtonHint;
    }
    if (feel == B_FLOATING_ALL_WINDOW_FEEL || feel == B_MODAL_ALL_WINDOW_FEEL)
        hints |= Qt::WindowStaysOnTopHint;
    const QRect place = geometry();
    // To give it other flags Qt hides the window, which Appear() below makes good.
    if (hints != windowFlags())
        setWindowFlags(hints);
    setGeometry(place); // with its new flags Qt has taken it for the border's place
    setWindowModality(ModalityFor(feel));
    setAttribute(Qt::WA_ShowWithoutActivating, (flags & B_AVOID_FOCUS) != 0);
    fFlags = flags;
    ApplySize();
    SetFunctions(*this, flags);
    if (wasVisible)
        Appear(nullptr);
}

void WindowWidget::Place(const QRect& geometry, int32 serial)
{
    fSerial = serial;
    // The limits of the old size would cut the new one.
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    setGeometry(geometry);
    ApplySize();
}

void WindowWidget::SetLimits(QSize least, QSize most)
{
    fLeast = least;
    fMost = most;
    ApplySize();
}

// The window manager is told the limits; a window that cannot be resized has its size as both.
void WindowWidget::ApplySize()
{
    const bool fixedWidth = (fFlags & (B_NOT_RESIZABLE | B_NOT_H_RESIZABLE)) != 0;
    const bool fixedHeight = (fFlags & (B_NOT_RESIZABLE | B_NOT_V_RESIZABLE)) != 0;
    setMinimumSize(fixedWidth ? width() : fLeast.width(), fixedHeight ? height() : fLeast.height());
    setMaximumSize(fixedWidth ? width() : fMost.width(), fixedHeight ? height() : fMost.height());
}

void WindowWidget::SetWorkspaces(uint32 workspaces)
{
    xcb_connection_t* connection = Connection();
    if (!connection || workspaces == B_CURRENT_WORKSPACE)
        return;
    const xcb_window_t id = static_cast<xcb_window_t>(winId());
    const xcb_atom_t atom = Atom(connection, "_NET_WM_DESKTOP");
    // The window managers' protocol counts desktops from 0 and says with all bits set: on all.
    const uint32 desktop = workspaces == B_ALL_WORKSPACES
        ? 0xffffffff
        : static_cast<uint32>(std::countr_zero(workspaces));
    // The property for a window yet to be shown, the message for one that is.
    xcb_change_property(
        connection, XCB_PROP_MODE_REPLACE, id, atom, XCB_ATOM_CARDINAL, 32, 1, &desktop);
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = id;
    event.type = atom;
    event.data.data32[0] = desktop;
    event.data.data32[1] = 1; // asked for by the program
    // Whoever has asked for both of these events of the root is the window manager.
    xcb_send_event(connection, false,
        xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root,
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char*>(&event));
    xcb_flush(connection);
}

void StandOver(QWidget& box, const QWidget* asking)
{
    if (!asking || !asking->isVisible() || asking->isMinimized())
        asking = QApplication::activeWindow();
    if (asking && asking != &box && box.winId() != 0) // which makes its X window
        box.windowHandle()->setTransientParent(asking->windowHandle());
}

void WindowWidget::Appear(const QWidget* asking)
{
    if (isModal())
        StandOver(*this, asking);
    show();
}

void WindowWidget::BringToFront()
{
    if (isMinimized())
        showNormal();
    raise();
    activateWindow();
}

void WindowWidget::AddKeys(int32 id, const QKeySequence& keys)
{
    RemoveKeys(id);
    auto* shortcut = new QShortcut(keys, this);
    const auto report = [this, id] {
        BMessage message(kMsgShortcut);
        message.AddInt32("shortcut", id);
        Report(message);
    };
    connect(shortcut, &QShortcut::activated, this, report);
    // A widget in it may know the same keys: the window's shortcut counts all the same.
    connect(shortcut, &QShortcut::activatedAmbiguously, this, report);
    fKeys[id] = shortcut;
}

void WindowWidget::RemoveKeys(int32 id)
{
    const auto found = fKeys.find(id);
    if (found == fKeys.end())
        return;
    delete found->second;
    fKeys.erase(found);
}

void WindowWidget::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the window closes itself if it agrees
    if (!(fFlags & B_NOT_CLOSABLE))
        Report(BMessage(B_QUIT_REQUESTED));
}

void WindowWidget::Lost()
{
    Report(BMessage(B_QUIT_REQUESTED));
}

void WindowWidget::moveEvent(QMoveEvent*)
{
    BMessage message(B_WINDOW_MOVED);
    message.AddPoint("where", FromQPoint(geometry().topLeft()));
    ReportLatest(message);
}

void WindowWidget::resizeEvent(QResizeEvent* event)
{
    BMessage message(B_WINDOW_RESIZED);
    message.AddInt32("width", event->size().width() - 1);
    message.AddInt32("height", event->size().height() - 1);
    ReportLatest(message);
}

void WindowWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::ActivationChange) {
        BMessage message(B_WINDOW_ACTIVATED);
        message.AddBool("active", isActiveWindow());
        Report(message);
    }
    QWidget::changeEvent(event);
}

void WindowWidget::keyPressEvent(QKeyEvent* event)
{
    const BMessage message = KeyMessage(*event);
    if (message.HasString("bytes"))
        Report(message);
}

void WindowWidget::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DroppedFiles(*event->mimeData()).IsEmpty())
        event->acceptProposedAction();
}

void WindowWidget::dropEvent(QDropEvent* event)
{
    BMessage message = DroppedFiles(*event->mimeData());
    if (message.IsEmpty())
        return;
    event->acceptProposedAction();
    MarkDropped(message);
    Report(message);
}

void WindowWidget::Report(const BMessage& message) const
{
    PostAlways(fLink->window, message);
}

void WindowWidget::ReportLatest(BMessage message) const
{
    message.AddInt64("when", system_time());
    message.AddInt32("serial", fSerial);
    PostLatest(fLink->window, message);
}

// --- Lost windows

LostWindows::LostWindows()
{
    qApp->installNativeEventFilter(this);
}

// Windows that Qt itself destroys are no widget's any more when their event comes.
bool LostWindows::nativeEventFilter(const QByteArray&, void* event, qintptr*)
{
    const auto* note = static_cast<const xcb_destroy_notify_event_t*>(event);
    if ((note->response_type & 0x7f) != XCB_DESTROY_NOTIFY)
        return false;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = dynamic_cast<WindowWidget*>(widget);
        if (window && window->internalWinId() == note->window)
            window->Lost();
    }
    return false;
}
