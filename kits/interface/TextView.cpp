#include "TextView.h"

#include "Message.h"
#include "ScrollBar.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/TextWidget.h"
#include "server/ViewEvents.h"

namespace {

TextWidget& Widget(ViewPeer* peer)
{
    return *static_cast<TextWidget*>(peer->widget);
}

} // namespace

BTextView::BTextView(BRect frame, const char* name, BRect textRect, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags), fTextRect(textRect)
{
}

const char* BTextView::Text()
{
    if (Peer())
        fText = display::Call([this] { return Widget(Peer()).toPlainText(); }).toStdString();
    return fText.c_str();
}

int32 BTextView::TextLength()
{
    Text();
    return static_cast<int32>(fText.size());
}

void BTextView::SetText(const char* text)
{
    fText = text ? text : "";
    if (Peer())
        display::Call([this] { Widget(Peer()).setPlainText(QString::fromStdString(fText)); });
}

void BTextView::Insert(const char* text)
{
    if (!text)
        return;
    if (!Peer()) {
        fText.insert(0, text);
        return;
    }
    display::Call([this, text] { Widget(Peer()).insertPlainText(QString::fromUtf8(text)); });
}

void BTextView::Select(int32 start, int32 finish)
{
    if (Peer())
        display::Call([this, start, finish] { Widget(Peer()).SelectBytes(start, finish); });
}

void BTextView::SelectAll()
{
    Select(0, TextLength());
}

void BTextView::GetSelection(int32* start, int32* finish)
{
    *start = *finish = 0;
    if (!Peer())
        return;
    display::Call([this, start, finish] {
        const TextWidget& widget = Widget(Peer());
        *start = widget.ByteOffsetOf(widget.textCursor().selectionStart());
        *finish = widget.ByteOffsetOf(widget.textCursor().selectionEnd());
    });
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

void BTextView::SetWordWrap(bool wrap)
{
    fWordWrap = wrap;
    ShowManners();
}

void BTextView::ShowManners()
{
    if (Peer())
        display::Call([this] { Widget(Peer()).SetManners(fEditable, fSelectable, fWordWrap); });
}

void BTextView::SetTextRect(BRect rect)
{
    fTextRect = rect;
    if (Peer()) {
        display::Call([this] { Widget(Peer()).SetTextRect(fTextRect, ToQRect(Frame()).size()); });
    }
}

float BTextView::TextHeight()
{
    return static_cast<float>(display::Call([this] {
        if (Peer())
            return Widget(Peer()).TextHeight();
        QTextDocument document(QString::fromStdString(fText)); // as the widget will lay it out
        BFont font;
        GetFont(&font);
        document.setDefaultFont(ToQFont(font));
        document.setDocumentMargin(0);
        document.setTextWidth(fTextRect.Width() + 1);
        return static_cast<int>(document.size().height() + 0.999);
    }));
}

void BTextView::ScrollTo(BPoint where)
{
    if (Peer())
        display::Call([this, where] { Widget(Peer()).Scroll(where); });
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
    Text();
}

void BTextView::MakeWidget(ViewPeer& peer)
{
    auto* widget = new TextWidget(peer.link, peer.parent);
    widget->setPlainText(QString::fromStdString(fText));
    widget->SetManners(fEditable, fSelectable, fWordWrap);
    widget->SetTextRect(fTextRect, ToQRect(Frame()).size());
    peer.widget = widget;
    Equip(peer, Name(), ViewEvents::Kind::kControl);
    if (fEditable)
        widget->setFocusPolicy(Qt::StrongFocus);
}
