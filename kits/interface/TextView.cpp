#include "TextView.h"

#include "Message.h"
#include "ScrollBar.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/TextWidgets.h"
#include "server/ViewPeer.h"

#include <algorithm>

namespace {

TextPeer& TextOf(const ViewPeer& peer)
{
    return dynamic_cast<TextPeer&>(*peer.widget);
}

} // namespace

BTextView::BTextView(BRect frame, const char* name, BRect textRect, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags), fTextRect(textRect)
{
    BView::SetViewColor(ui_color(B_DOCUMENT_BACKGROUND_COLOR));
}

const char* BTextView::Text()
{
    // A text that reports is known here, up to what waits as a message; another must be asked for.
    if (!fIsReported)
        FetchText();
    return fText.c_str();
}

void BTextView::FetchText()
{
    if (Peer())
        fText = display::Call([this] { return TextOf(*Peer()).Contents(); }).toStdString();
}

int32 BTextView::TextLength()
{
    Text();
    return static_cast<int32>(fText.size());
}

void BTextView::SetText(const char* text)
{
    // Cut here as the widget would do it: outside a window there is none that could.
    const QString contents = Limit().Cut(QString::fromUtf8(text));
    fText = contents.toStdString();
    ChangeText(Apply::kAlways, [&](TextPeer& peer) { peer.SetContents(contents); });
}

void BTextView::ChangeText(Apply apply, const std::function<void(TextPeer&)>& change)
{
    if (!Peer())
        return;
    display::Call([&] {
        TextPeer& text = TextOf(*Peer());
        const int32 before = text.Version();
        // The user has typed since: positions that the program counted would be wrong in this text.
        if (apply == Apply::kToKnownText && before != fVersion)
            return;
        change(text);
        if (apply == Apply::kToKnownText && fIsReported)
            HoldText(text);
        if (text.Version() == before)
            return;
        fVersion = text.Version();
        fText = text.Contents().toStdString();
    });
}

// Changes that follow in the same message belong to this one: what the user does comes after them.
void BTextView::HoldText(TextPeer& text)
{
    text.Hold();
    BMessage report(kMsgWidgetChanged);
    report.AddBool("release", true);
    Peer()->link->Post(report);
}

void BTextView::ReleaseText()
{
    if (Peer())
        display::Call([this] { TextOf(*Peer()).Release(); });
}

bool BTextView::TakeReport(const char* text, int32 version)
{
    // Typed before the program's last change, which has replaced it.
    if (version < fVersion)
        return false;
    fText = text;
    fVersion = version;
    return true;
}

void BTextView::Insert(const char* text)
{
    if (!text)
        return;
    // At the beginning, where the caret of a new text stands.
    if (!Peer())
        return SetText((text + fText).c_str());
    ChangeText(
        Apply::kToKnownText, [text](TextPeer& peer) { peer.InsertText(QString::fromUtf8(text)); });
}

void BTextView::Select(int32 start, int32 finish)
{
    ChangeText(Apply::kToKnownText, [=](TextPeer& peer) { peer.SelectBytes(start, finish); });
}

void BTextView::GetSelection(int32* start, int32* finish)
{
    *start = *finish = 0;
    if (Peer())
        display::Call([=, this] { TextOf(*Peer()).GetSelectedBytes(*start, *finish); });
}

void BTextView::SetMaxBytes(int32 most)
{
    fMaxBytes = std::max<int32>(most, 0);
    ApplyLimit();
}

void BTextView::SetMaxCharacters(int32 most)
{
    fMaxCharacters = std::max<int32>(most, 0);
    ApplyLimit();
}

TextLimit BTextView::Limit() const
{
    return { fMaxBytes, fMaxCharacters };
}

void BTextView::ApplyLimit()
{
    fText = Limit().Cut(QString::fromStdString(fText)).toStdString();
    ChangeText(Apply::kAlways, [this](TextPeer& peer) { peer.SetLimit(Limit()); });
}

void BTextView::SetFontAndColor(int32 start, int32 finish, const BFont* font)
{
    if (!Peer() || !font)
        return;
    display::Call([&] { TextOf(*Peer()).SetBytesFont(start, finish, ToQFont(*font)); });
}

void BTextView::LeaveEnterToWindow()
{
    fLeavesEnter = true;
    if (Peer())
        display::Call([this] { TextOf(*Peer()).LeaveEnter(); });
}

void BTextView::MakeEditable(bool editable)
{
    fEditable = editable;
    ShowManners();
}

void BTextView::MakeSelectable(bool selectable)
{
    fSelectable = selectable;
    ShowManners();
}

void BTextView::ShowManners()
{
    if (Peer())
        display::Call([this] { TextOf(*Peer()).SetManners(fEditable, fSelectable); });
}

void BTextView::SetTextRect(BRect rect)
{
    fTextRect = rect;
    if (Peer()) {
        display::Call([this] { TextOf(*Peer()).SetTextRect(fTextRect, ToQRect(Frame()).size()); });
    }
}

float BTextView::TextHeight()
{
    return static_cast<float>(display::Call([this] {
        if (Peer())
            return TextOf(*Peer()).TextHeight();
        QTextDocument document(QString::fromStdString(fText)); // as the widget will lay it out
        BFont font;
        GetFont(&font);
        document.setDefaultFont(ToQFont(font));
        document.setDocumentMargin(0);
        document.setTextWidth(fTextRect.Width() + 1);
        return static_cast<int>(document.size().height() + 0.999);
    }));
}

// The widget scrolls its text within itself: the view's own origin stays where it is.
void BTextView::ScrollTo(BPoint where)
{
    if (Peer())
        display::Call([this, where] { TextOf(*Peer()).Scroll(where); });
}

void BTextView::WidgetChanged(BMessage* report)
{
    ShowBar(*report, ScrollBar(B_HORIZONTAL), "h_");
    ShowBar(*report, ScrollBar(B_VERTICAL), "v_");
}

void BTextView::ShowBar(const BMessage& report, BScrollBar* bar, const char* prefix)
{
    if (!bar)
        return;
    const auto read = [&report, prefix](const char* name) {
        int32 value = 0;
        report.FindInt32((std::string(prefix) + name).c_str(), &value);
        return static_cast<float>(value);
    };
    const float page = read("page");
    const float max = read("max");
    bar->SetRange(0, max);
    bar->SetProportion(page / (page + max + 1));
    bar->SetSteps(read("step"), page);
    bar->SetValue(read("value"));
}

void BTextView::WidgetGoes()
{
    FetchText();
}

void BTextView::MakeWidget(ViewPeer& peer)
{
    peer.widget = new TextWidget(peer.link, peer.parent);
    EquipText(peer);
    // Equip() has taken it from a view without B_NAVIGABLE, where nothing could be typed then.
    if (fEditable)
        peer.widget->setFocusPolicy(Qt::StrongFocus);
}

void BTextView::EquipText(ViewPeer& peer)
{
    TextPeer& text = TextOf(peer);
    // The limit first, as SetContents() cuts by it.
    text.SetLimit(Limit());
    text.SetContents(QString::fromStdString(fText));
    text.SetManners(fEditable, fSelectable);
    if (fLeavesEnter)
        text.LeaveEnter();
    // By the frame: the widget has not got its size yet.
    text.SetTextRect(fTextRect, ToQRect(Frame()).size());
    fVersion = text.Version();
    Equip(peer, Name(), ViewEvents::Kind::kControl);
}
