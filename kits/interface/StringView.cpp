#include "StringView.h"

#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace {

void ShowColor(QWidget& label, rgb_color color)
{
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, ToQColor(color));
    label.setPalette(palette);
}

// A label that shows, as a link's may, that it has the keyboard.
class LabelWidget : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QLabel::paintEvent(event);
        if (!hasFocus())
            return;
        QPainter painter(this);
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = style()->itemTextRect(
            fontMetrics(), rect(), static_cast<int>(alignment()), true, text());
        option.rect = option.rect.adjusted(-2, 0, 2, 0) & rect();
        option.backgroundColor = palette().color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
};

} // namespace

BStringView::BStringView(
    BRect frame, const char* name, const char* text, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags), fText(text ? text : "")
{
    BView::SetViewColor(B_TRANSPARENT_COLOR);
}

void BStringView::AttachedToWindow()
{
    TakeParentsColor();
}

void BStringView::SetText(const char* text)
{
    fText = text ? text : "";
    if (Peer()) {
        display::Call([this] {
            static_cast<QLabel*>(Peer()->widget)->setText(QString::fromStdString(fText));
        });
    }
}

void BStringView::SetAlignment(alignment side)
{
    fAlignment = side;
    if (Peer()) {
        display::Call([this] {
            static_cast<QLabel*>(Peer()->widget)->setAlignment(ToQAlignment(fAlignment));
        });
    }
}

void BStringView::SetHighColor(rgb_color color)
{
    BView::SetHighColor(color);
    // Until here the label has the desktop's own colour, which may be light on dark.
    fHasColor = true;
    if (Peer())
        display::Call([this, color] { ShowColor(*Peer()->widget, color); });
}

void BStringView::GetPreferredSize(float* width, float* height)
{
    GetWidgetSize(width, height);
}

void BStringView::MakeWidget(ViewPeer& peer)
{
    auto* label = new LabelWidget(peer.parent);
    peer.widget = label;
    Equip(peer, Name(), ViewEvents::Kind::kView); // its text tells readers what kind it is
    // Qt would take a text that looks like markup, as a file's name may, for markup.
    label->setTextFormat(Qt::PlainText);
    label->setText(QString::fromStdString(fText));
    label->setAlignment(ToQAlignment(fAlignment));
    if (fHasColor)
        ShowColor(*label, HighColor());
}
