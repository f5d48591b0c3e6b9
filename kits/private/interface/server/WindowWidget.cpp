#include "server/WindowWidget.h"

#include "Entry.h"
#include "MessageDelivery.h"
#include "server/Convert.h"
#include "server/InputMessages.h"
#include "server/ServerMessages.h"
#include "server/WindowHints.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QKeyEvent>
#include <QMimeData>
#include <QResizeEvent>
#include <QWindow>

WindowWidget::WindowWidget(std::shared_ptr<WindowLink> link) : fLink(std::move(link))
{
    setFocusPolicy(Qt::NoFocus);
    setAcceptDrops(true);
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
    Qt::WindowFlags hints = TypeFor(look, feel) | Qt::CustomizeWindowHint;
    if (!(hints & Qt::FramelessWindowHint))
        hints |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if (!(flags & B_NOT_CLOSABLE))
        hints |= Qt::WindowCloseButtonHint;
    if (!(flags & B_NOT_MINIMIZABLE))
        hints |= Qt::WindowMinimizeButtonHint;
    if (!(flags & B_NOT_ZOOMABLE))
        hints |= Qt::WindowMaximizeButtonHint;
    if (feel == B_FLOATING_ALL_WINDOW_FEEL || feel == B_MODAL_ALL_WINDOW_FEEL)
        hints |= Qt::WindowStaysOnTopHint;
    const QRect place = geometry();
    if (hints != windowFlags())
        setWindowFlags(hints);
    setGeometry(place); // with its new flags Qt has taken it for the border's place
    setWindowModality(ModalityFor(feel));
    setAttribute(Qt::WA_ShowWithoutActivating, (flags & B_AVOID_FOCUS) != 0);
    fFlags = flags;
    ApplySize();
    SetWindowFunctions(*this, flags);
    if (wasVisible)
        Appear();
}

void WindowWidget::Place(const QRect& geometry, int32 serial)
{
    fSerial = serial;
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
    SetWindowWorkspace(*this, workspaces);
}

void WindowWidget::Appear()
{
    const QWidget* active = QApplication::activeWindow();
    if (isModal() && active && active != this) // stays in front of what it asks about
        windowHandle()->setTransientParent(active->windowHandle());
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
