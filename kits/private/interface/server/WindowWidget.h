// The top-level widget of a BWindow. It reports to the window and changes nothing by itself.
#pragma once

#include "InterfaceDefs.h"
#include "server/ViewPeer.h"

#include <QAbstractNativeEventFilter>
#include <QShortcut>
#include <QWidget>

#include <map>

class BMessage;

class WindowWidget : public QWidget {
public:
    explicit WindowWidget(std::shared_ptr<WindowLink> link);

    // Look, feel and flags as the window manager's hints.
    void SetKind(window_look look, window_feel feel, uint32 flags);
    // serial comes with the reports of what follows.
    void Place(const QRect& geometry, int32 serial);
    void SetLimits(QSize least, QSize most);
    // Bits, or B_ALL_WORKSPACES; the lowest one counts. B_CURRENT_WORKSPACE does nothing.
    void SetWorkspaces(uint32 workspaces);
    // Where it is modal, over the widget of the window that asks, see StandOver().
    void Appear(const QWidget* asking);
    void BringToFront();
    void AddKeys(int32 id, const QKeySequence& keys);
    void RemoveKeys(int32 id);
    void Lost(); // its X window is no more: the window is asked to quit

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ApplySize();
    void Report(const BMessage& message) const;
    void ReportLatest(BMessage message) const;

    const std::shared_ptr<WindowLink> fLink;
    uint32 fFlags = 0;
    int32 fSerial = 0;
    QSize fLeast { 0, 0 };
    QSize fMost { 32768, 32768 };
    std::map<int32, QShortcut*> fKeys;
};

// Tells the window manager that a box belongs to the window which asks, or where that cannot be
// seen to the active one: it stays in front of it. One that belongs to no window in use may get
// neither the keyboard nor a place in front.
void StandOver(QWidget& box, const QWidget* asking);

struct WindowPeer {
    std::shared_ptr<WindowLink> link;
    WindowWidget* widget = nullptr;
};

// Watches for windows that somebody else has taken off the X server, as tools can: what is drawn in
// them goes nowhere. Each is asked to quit. On the server's thread, as long as it lives.
class LostWindows : public QAbstractNativeEventFilter {
public:
    LostWindows();

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;
};
