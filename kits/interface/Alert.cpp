#include "Alert.h"

#include "Autolock.h"
#include "Button.h"
#include "Invoker.h"
#include "KillGuard.h"
#include "LeafLock.h"
#include "Message.h"
#include "MessageDelivery.h"
#include "ScrollView.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "TextView.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QStyle>
#include <QTextDocument>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <cstdio>

// In view units, as counts of pixels.
struct AlertText {
    float width;
    float height; // of the whole text
    float shownHeight; // as much as the screen has room for
};

namespace {

class AlertIcon : public BView {
public:
    static constexpr float kSize = 32;

    AlertIcon(BPoint where, alert_type type);

protected:
    void MakeWidget(ViewPeer& peer) override;

private:
    const alert_type fType;
};

constexpr uint32 kMsgButton = 'ALTB';
constexpr float kMargin = 12;
constexpr float kGap = 8; // between buttons
constexpr float kOffsetGap = 32; // before the last ones with B_OFFSET_SPACING
constexpr float kButtonWidth = 75;
constexpr float kIconRoom = AlertIcon::kSize + kMargin;
// How far what the caller's window shows may lag while Go() waits in its thread.
constexpr bigtime_t kRedrawMicros = 50000;

QStyle::StandardPixmap PixmapOf(alert_type type)
{
    switch (type) {
        case B_IDEA_ALERT: return QStyle::SP_MessageBoxQuestion;
        case B_WARNING_ALERT: return QStyle::SP_MessageBoxWarning;
        case B_STOP_ALERT: return QStyle::SP_MessageBoxCritical;
        default: return QStyle::SP_MessageBoxInformation;
    }
}

float Ceiling(qreal length)
{
    return static_cast<float>(std::ceil(length));
}

AlertIcon::AlertIcon(BPoint where, alert_type type)
    : BView(BRect(where.x, where.y, where.x + kSize - 1, where.y + kSize - 1), "icon",
        B_FOLLOW_LEFT | B_FOLLOW_TOP, 0),
      fType(type)
{
    SetViewColor(B_TRANSPARENT_COLOR);
}

void AlertIcon::MakeWidget(ViewPeer& peer)
{
    auto* label = new QLabel(peer.parent);
    const QIcon icon = QApplication::style()->standardIcon(PixmapOf(fType));
    label->setPixmap(icon.pixmap(static_cast<int>(kSize)));
    peer.widget = label;
    Equip(peer, Name(), ViewEvents::Kind::kView);
}

// The part of the screen that windows may cover.
BRect AlertRoom()
{
    return display::Call(
        [] { return FromQRect(QGuiApplication::primaryScreen()->availableGeometry()); });
}

// Lays the text out in the default font: no wider than reads well, unless it would not fit the
// screen's height; at least minWidth.
AlertText LayOutAlertText(const char* text, float minWidth)
{
    // Longer lines are hard to read. How high a text is for a width is known only once it has been
    // laid out, so the width grows in steps until it fits.
    constexpr float kReadableWidth = 360;
    constexpr float kStep = 120;
    constexpr float kOtherHeight = 140; // title, margins and buttons
    const BRect room = AlertRoom();
    const float most = room.Width() * 3 / 4;
    const float tallest = room.Height() - kOtherHeight;
    return display::Call([=] {
        QTextDocument document(QString::fromUtf8(text));
        document.setDocumentMargin(0);
        const float natural = Ceiling(document.idealWidth()) + 1;
        float width = std::max(std::min(natural, kReadableWidth), minWidth);
        document.setTextWidth(width);
        while (document.size().height() > tallest && width < most) {
            width += kStep;
            document.setTextWidth(width);
        }
        const float height = Ceiling(document.size().height());
        return AlertText { width, height, std::min(height, tallest) };
    });
}

} // namespace

// What Go() waits for. It outlives the alert.
struct BAlert::Answer {
    Mutex lock;
    Condition changed;
    bool isGiven GUARDED_BY(lock) = false;
    int32 which GUARDED_BY(lock) = -1;

    void Give(int32 index)
    {
        const LeafLock holder(lock);
        if (!isGiven)
            which = index;
        isGiven = true;
        changed.notify_all();
    }

    // Waits a little; true once the answer is there.
    bool WaitForIt()
    {
        const LeafLock holder(lock, LeafLock::kWaits);
        if (!isGiven)
            changed.wait_for(lock, std::chrono::microseconds(kRedrawMicros));
        return isGiven;
    }
};

BAlert::BAlert(const char* title, const char* text, const char* button1, const char* button2,
    const char* button3, button_width width, alert_type type)
    : BAlert(title, text, button1, button2, button3, width, B_EVEN_SPACING, type)
{
}

BAlert::BAlert(const char* title, const char* text, const char* button1, const char* button2,
    const char* button3, button_width width, button_spacing spacing, alert_type type)
    : BWindow(BRect(0, 0, 100, 50), title, B_MODAL_WINDOW_LOOK, B_MODAL_APP_WINDOW_FEEL,
        B_NOT_CLOSABLE | B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fType(type), fAnswer(std::make_shared<Answer>())
{
    const char* const labels[3] = { button1, button2, button3 };
    Build(text ? text : "", labels, width, spacing);
}

BAlert::~BAlert()
{
    Answered(-1); // for a Go() that still waits
}

// --- Layout

void BAlert::Build(
    const char* text, const char* const labels[3], button_width width, button_spacing spacing)
{
    BView* back = new BView(Bounds(), "back", B_FOLLOW_ALL_SIDES, 0);
    AddChild(back);
    back->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    const float buttonsWidth = AddButtons(back, labels, width, spacing);
    float left = kMargin;
    if (fType != B_EMPTY_ALERT) {
        back->AddChild(new AlertIcon(BPoint(left, kMargin), fType));
        left += kIconRoom;
    }
    const AlertText laidOut = LayOutAlertText(text, buttonsWidth + kMargin - left);
    const float textBottom = AddText(back, text, laidOut, left);
    const float buttonHeight = fButtons[0]->Bounds().Height();
    // The buttons follow right and bottom.
    ResizeTo(left + laidOut.width + kMargin,
        std::max(textBottom, kMargin + AlertIcon::kSize) + buttonHeight + 2 * kMargin);
}

// Returns the text's bottom edge. A text too long for the screen gets a scroll bar.
float BAlert::AddText(BView* back, const char* text, const AlertText& laidOut, float left)
{
    const BRect frame(left, kMargin, left + laidOut.width - 1, kMargin + laidOut.shownHeight - 1);
    const BRect inside = frame.OffsetToCopy(0, 0);
    fText = new BTextView(frame, "_tv_", inside, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW);
    fText->SetViewColor(back->ViewColor());
    fText->SetText(text);
    fText->MakeEditable(false);
    fText->MakeSelectable(false);
    if (laidOut.shownHeight >= laidOut.height) {
        back->AddChild(fText);
    } else {
        fText->ResizeBy(-B_V_SCROLL_BAR_WIDTH, 0);
        fText->SetTextRect(fText->Bounds());
        back->AddChild(new BScrollView(
            "scroll", fText, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0, false, true, B_NO_BORDER));
    }
    return frame.bottom;
}

// From the right, for a window of the present size. Returns the width of the row.
float BAlert::AddButtons(
    BView* back, const char* const labels[3], button_width width, button_spacing spacing)
{
    float widest = width == B_WIDTH_FROM_LABEL ? 0 : kButtonWidth;
    for (int32 i = 0; i < 3 && (i == 0 || labels[i]); i++) {
        BMessage* message = new BMessage(kMsgButton);
        message->AddInt32("which", i);
        const std::string name = "_b" + std::to_string(i) + "_";
        fButtons.push_back(new BButton(BRect(), name.c_str(), labels[i] ? labels[i] : "OK", message,
            B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM));
        back->AddChild(fButtons.back());
        float preferred = 0;
        fButtons.back()->ResizeToPreferred();
        fButtons.back()->GetPreferredSize(&preferred, nullptr);
        if (width == B_WIDTH_FROM_WIDEST)
            widest = std::max(widest, preferred);
    }
    float right = Bounds().right - kMargin;
    for (size_t i = fButtons.size(); i-- > 0;) {
        BButton* button = fButtons[i];
        const BRect bounds = button->Bounds();
        button->ResizeTo(std::max(widest, bounds.Width()), bounds.Height());
        button->MoveTo(
            right - button->Bounds().Width(), Bounds().bottom - kMargin - bounds.Height());
        const bool isApart = spacing == B_OFFSET_SPACING && i == 1;
        right = button->Frame().left - (isApart ? kOffsetGap : kGap);
    }
    fButtons.back()->MakeDefault(true);
    return Bounds().right - kMargin - fButtons[0]->Frame().left;
}

BPoint BAlert::AlertPosition(float width, float height)
{
    const BRect room = AlertRoom();
    return BPoint(std::floor(room.left + (room.Width() - width) / 2),
        std::floor(room.top + (room.Height() - height) / 2));
}

// --- Asking

BPoint BAlert::PlaceOver(const BWindow* caller)
{
    constexpr float kTitle = 28; // for which, and a border, the screen must have room too
    constexpr float kBorder = 6;
    const BRect size = Bounds();
    if (!caller || caller->IsHidden())
        return AlertPosition(size.Width(), size.Height());
    const BRect frame = caller->Frame();
    BRect room = AlertRoom();
    room.top += kTitle;
    room.left += kBorder;
    room.right -= kBorder + size.Width();
    room.bottom -= kBorder + size.Height();
    BPoint corner(std::floor((frame.left + frame.right - size.Width()) / 2),
        std::floor((frame.top + frame.bottom - size.Height()) / 2));
    corner.ConstrainTo(room);
    return corner;
}

// False if there is no thread for it.
bool BAlert::Present(const BWindow* caller)
{
    const BAutolock lock(this);
    MoveTo(PlaceOver(caller));
    if (!CurrentFocus())
        fButtons.back()->MakeFocus();
    Show();
    return Thread() >= B_OK;
}

// What it would have told; deletes this.
void BAlert::GiveUp()
{
    fprintf(stderr, "%s\n", fText->Text());
    if (Lock())
        Quit(); // which unlocks: so this is no block
}

int32 BAlert::Go()
{
    const std::shared_ptr<Answer> answer = fAnswer; // the alert deletes itself
    BWindow* caller = Calling();
    if (!Present(caller))
        GiveUp();
    while (!answer->WaitForIt()) {
        CheckKilled();
        if (caller)
            caller->UpdateIfNeeded();
    }
    const LeafLock lock(answer->lock);
    return answer->which;
}

status_t BAlert::Go(BInvoker* invoker)
{
    fInvoker.reset(invoker);
    if (Present(Calling()))
        return B_OK;
    GiveUp();
    return B_ERROR;
}

// Gone before anybody hears of it: a window that appears next would get the keyboard only to pass
// it on to this one.
void BAlert::Answered(int32 which)
{
    Hide();
    fAnswer->Give(which);
}

void BAlert::MessageReceived(BMessage* message)
{
    if (message->what != kMsgButton)
        return BWindow::MessageReceived(message);
    if (fIsAnswered)
        return;
    int32 which = -1;
    message->FindInt32("which", &which);
    fIsAnswered = true;
    Answered(which);
    if (fInvoker && fInvoker->Message()) {
        BMessage answer(*fInvoker->Message());
        answer.AddInt32("which", which);
        fInvoker->Invoke(&answer);
    }
    PostAlways(BMessenger(this, this), BMessage(B_QUIT_REQUESTED));
}

// --- Keys

void BAlert::SetShortcut(int32 index, char key)
{
    if (index < 0 || index >= 3)
        return;
    fShortcuts[index] = static_cast<char>(tolower(static_cast<uint8>(key)));
    if (BButton* button = ButtonAt(index))
        button->SetMnemonic(isalnum(static_cast<uint8>(key)) ? key : '\0');
}

BButton* BAlert::ButtonAt(int32 index) const
{
    const bool exists = index >= 0 && index < static_cast<int32>(fButtons.size());
    return exists ? fButtons[static_cast<size_t>(index)] : nullptr;
}

void BAlert::UnusedKeyDown(const char* bytes, int32 numBytes)
{
    const char key = static_cast<char>(tolower(static_cast<uint8>(bytes[0])));
    for (size_t i = 0; i < fButtons.size(); i++) {
        // Escape gives the only answer that there is, even without a shortcut.
        const bool isOnly = key == B_ESCAPE && fButtons.size() == 1;
        if (fShortcuts[i] == key || isOnly) {
            if (fButtons[i]->IsEnabled())
                fButtons[i]->Invoke();
            return;
        }
    }
    if (key != B_ESCAPE || (Flags() & B_NOT_CLOSABLE))
        return BWindow::UnusedKeyDown(bytes, numBytes);
    PostAlways(BMessenger(this, this), BMessage(B_QUIT_REQUESTED));
}
