#include "TextControl.h"

#include "Message.h"
#include "PopUpMenu.h"
#include "server/Accessibility.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/TextWidgets.h"
#include "server/ViewPeer.h"
#include "TextView.h"

#include <QLabel>
#include <QMenu>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kLabelGap = 4; // between label and text

} // namespace

// A BTextView with a line as its widget, so that programs set limits and selection through
// TextView() as they do for several lines.
class BTextControl::Input : public BTextView {
public:
    explicit Input(BRect frame)
        : BTextView(frame, "_input_", frame.OffsetToCopy(0, 0), B_FOLLOW_ALL_SIDES)
    {
        UseReports();
    }

    void SetTextAlignment(alignment side)
    {
        fAlignment = side;
        if (Peer())
            display::Call([this] { ShowAlignment(); });
    }
    void GetPreferredSize(float* width, float* height) override { GetWidgetSize(width, height); }
    void AddToMenu(QWidget* more)
    {
        if (Peer() && more)
            display::Call([this, more] {
                static_cast<LineWidget*>(Peer()->widget)->AddToMenu(static_cast<QMenu*>(more));
            });
    }

protected:
    void MakeWidget(ViewPeer& peer) override
    {
        peer.widget = new LineWidget(peer.link, peer.parent);
        EquipText(peer);
        static_cast<LineWidget*>(peer.widget)->setAlignment(ToQAlignment(fAlignment));
    }
    void WidgetChanged(BMessage* report) override
    {
        const char* text = nullptr;
        int32 version = 0;
        // The program has answered what came before: the keys that wait go to where the focus is.
        if (report->HasBool("release"))
            return ReleaseText();
        if (report->FindString("text", &text) != B_OK
            || report->FindInt32("version", &version) != B_OK)
            return;
        // What the program has replaced meanwhile is no longer told to it.
        if (TakeReport(text, version))
            static_cast<BTextControl*>(Parent())->TextReported(
                report->HasBool("done"), report->HasBool("inserted"));
    }
    void KeyDown(const char*, int32) override { } // the widget has used it

private:
    void ShowAlignment()
    {
        static_cast<LineWidget*>(Peer()->widget)->setAlignment(ToQAlignment(fAlignment));
    }

    alignment fAlignment = B_ALIGN_LEFT;
};

BTextControl::BTextControl(BRect frame, const char* name, const char* label, const char* text,
    BMessage* message, uint32 resizeMode, uint32 flags)
    : BControl(frame, name, label, message, resizeMode, flags),
      fDivider(*Label() ? std::floor(frame.Width() / 2) : 0)
{
    BRect place = Bounds();
    place.left = fDivider;
    fTextView = new Input(place);
    fTextView->SetText(text);
    AddChild(fTextView);
}

BTextControl::~BTextControl() = default;

const char* BTextControl::Text() const
{
    return fTextView->Text();
}

void BTextControl::SetText(const char* text)
{
    fTextView->SetText(text);
}

BTextView* BTextControl::TextView() const
{
    return fTextView;
}

void BTextControl::AddToMenu(const BPopUpMenu& more)
{
    fTextView->AddToMenu(more.fMenuPeer ? more.fMenuPeer->widget : nullptr);
}

void BTextControl::SetModificationMessage(BMessage* message)
{
    fModificationMessage.reset(message);
}

void BTextControl::TextReported(bool isDone, bool isInserted)
{
    if (isDone) {
        Invoke();
    } else if (fModificationMessage) {
        BMessage message(*fModificationMessage);
        message.AddString("be:text", Text());
        message.AddBool("be:inserted", isInserted);
        Invoke(&message);
    }
}

void BTextControl::SetDivider(float x)
{
    fDivider = x;
    fTextView->MoveTo(x, 0);
    fTextView->ResizeTo(Bounds().Width() - x, Bounds().Height());
    if (Peer())
        display::Call([this] { ShowLabelPlace(*Peer()); });
}

void BTextControl::SetAlignment(alignment label, alignment text)
{
    fLabelAlignment = label;
    fTextView->SetTextAlignment(text);
    if (Peer())
        display::Call([this] { ShowLabelPlace(*Peer()); });
}

void BTextControl::SetFont(const BFont* font, uint32 mask)
{
    BControl::SetFont(font, mask);
    fTextView->SetFont(font, mask);
}

void BTextControl::MakeFocus(bool focus)
{
    fTextView->MakeFocus(focus);
}

void BTextControl::GetPreferredSize(float* width, float* height)
{
    float textWidth = 0;
    fTextView->GetPreferredSize(&textWidth, height);
    if (width)
        *width = fDivider + textWidth;
}

void BTextControl::MakeWidget(ViewPeer& peer)
{
    peer.widget = new QLabel(peer.parent);
    static_cast<QLabel*>(peer.widget)->setTextFormat(Qt::PlainText);
    ShowLabelPlace(peer);
    EquipWidget(peer);
    peer.widget->setFocusPolicy(Qt::NoFocus); // its text has the keyboard
}

void BTextControl::ShowLabel(ViewPeer& peer)
{
    static_cast<QLabel*>(peer.widget)->setText(QString::fromUtf8(Label()));
    // The field is called by its label, which has just changed.
    NameForReaders(*peer.widget);
}

void BTextControl::ShowLabelPlace(ViewPeer& peer)
{
    auto* label = static_cast<QLabel*>(peer.widget);
    // The label is the whole control's widget, under the text's: it keeps out of that part.
    const auto right = static_cast<int>(Bounds().Width() + 1 - fDivider + kLabelGap);
    label->setContentsMargins(0, 0, std::max(right, 0), 0);
    label->setAlignment(ToQAlignment(fLabelAlignment));
}
