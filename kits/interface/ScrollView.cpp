#include "ScrollView.h"

#include "ScrollBar.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"

#include <QApplication>
#include <QFrame>
#include <QPainter>

namespace {

// Its border says when what it holds, which draws itself, has the keyboard.
class ScrollFrame : public QFrame {
public:
    explicit ScrollFrame(QWidget* parent) : QFrame(parent)
    {
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
            if (isAncestorOf(before) != isAncestorOf(now))
                update();
        });
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QFrame::paintEvent(event);
        if (frameWidth() == 0 || !isAncestorOf(QApplication::focusWidget()))
            return;
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

float WidthOf(border_style border)
{
    if (border == B_NO_BORDER)
        return 0;
    return border == B_PLAIN_BORDER ? 1 : 2;
}

// Around the target: the border, and the bars to the right and below it.
BRect FrameAround(BRect target, bool horizontal, bool vertical, border_style border)
{
    const float width = WidthOf(border);
    target.InsetBy(-width, -width);
    if (vertical)
        target.right += B_V_SCROLL_BAR_WIDTH;
    if (horizontal)
        target.bottom += B_H_SCROLL_BAR_HEIGHT;
    return target;
}

} // namespace

BScrollView::BScrollView(const char* name, BView* target, uint32 resizeMode, uint32 flags,
    bool horizontal, bool vertical, border_style border)
    : BView(
        FrameAround(target ? target->Frame() : BRect(0, 0, 50, 50), horizontal, vertical, border),
        name, resizeMode, flags),
      fBorder(border)
{
    BView::SetViewColor(B_TRANSPARENT_COLOR);
    const float width = WidthOf(border);
    BRect inside = Bounds().InsetByCopy(width, width);
    // Where there are two bars, each ends before the corner that both would cover.
    const BRect bars = inside;
    if (vertical)
        inside.right -= B_V_SCROLL_BAR_WIDTH;
    if (horizontal)
        inside.bottom -= B_H_SCROLL_BAR_HEIGHT;
    if (target) {
        target->MoveTo(inside.LeftTop());
        target->SetResizingMode(B_FOLLOW_ALL_SIDES);
        AddChild(target);
    }
    // The ranges are only to begin with: the target sets its own when it knows what it holds.
    if (vertical) {
        fVertical = new BScrollBar(BRect(inside.right + 1, bars.top, bars.right, inside.bottom),
            "_VSB_", target, 0, 1000, B_VERTICAL);
        AddChild(fVertical);
    }
    if (horizontal) {
        fHorizontal = new BScrollBar(BRect(bars.left, inside.bottom + 1, inside.right, bars.bottom),
            "_HSB_", target, 0, 1000, B_HORIZONTAL);
        AddChild(fHorizontal);
    }
    // Last, as the hook may look for its bars.
    if (target)
        target->TargetedByScrollView(this);
}

void BScrollView::AttachedToWindow()
{
    TakeParentsColor();
}

BScrollBar* BScrollView::ScrollBar(orientation direction) const
{
    return direction == B_HORIZONTAL ? fHorizontal : fVertical;
}

void BScrollView::MakeWidget(ViewPeer& peer)
{
    auto* frame = new ScrollFrame(peer.parent);
    if (fBorder == B_PLAIN_BORDER)
        frame->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    else if (fBorder == B_FANCY_BORDER)
        frame->setFrameStyle(
            static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    peer.widget = frame;
    Equip(peer, Name(), ViewEvents::Kind::kView);
}
