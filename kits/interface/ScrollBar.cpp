#include "ScrollBar.h"

#include "Message.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "server/ViewWidget.h"

#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

// Qt's page is both the thumb's length and the trough's step; here they are two things.
class ScrollBarWidget : public QScrollBar {
public:
    ScrollBarWidget(Qt::Orientation direction, QWidget* parent) : QScrollBar(direction, parent)
    {
        UseDesktopColors(*this);
        setFocusPolicy(Qt::NoFocus);
        connect(this, &QScrollBar::actionTriggered, this, [this](int action) {
            // Qt has moved the slider by its own page and not applied that yet: this replaces it.
            if (action == SliderPageStepAdd)
                setSliderPosition(value() + fLargeStep);
            else if (action == SliderPageStepSub)
                setSliderPosition(value() - fLargeStep);
        });
    }

    void SetLargeStep(int step) { fLargeStep = step; }

private:
    int fLargeStep = 10;
};

int Whole(float value)
{
    return static_cast<int>(std::lround(value));
}

// The page whose share of range and page together is proportion.
int PageFor(float proportion, float range)
{
    // From proportion = page / (range + page). 1 would divide by zero: all is in sight, so the
    // thumb fills the trough.
    if (proportion == 1)
        return Whole(range) + 1;
    return std::max(Whole(range * proportion / (1 - proportion)), 1);
}

} // namespace

BScrollBar::BScrollBar(
    BRect frame, const char* name, BView* target, float min, float max, orientation direction)
    : BView(frame, name,
        direction == B_VERTICAL ? B_FOLLOW_RIGHT | B_FOLLOW_TOP_BOTTOM
                                : B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
        0),
      fOrientation(direction), fMin(min), fMax(std::max(min, max)), fValue(min), fShownValue(min)
{
    BView::SetViewColor(B_TRANSPARENT_COLOR);
    SetTarget(target);
}

BScrollBar::~BScrollBar()
{
    SetTarget(nullptr);
}

void BScrollBar::SetTarget(BView* target)
{
    const bool isVertical = fOrientation == B_VERTICAL;
    if (fTarget)
        (isVertical ? fTarget->fVerticalBar : fTarget->fHorizontalBar) = nullptr;
    fTarget = target;
    if (fTarget)
        (isVertical ? fTarget->fVerticalBar : fTarget->fHorizontalBar) = this;
}

void BScrollBar::SetValue(float value)
{
    CheckLocked();
    value = std::clamp(value, fMin, fMax);
    if (value == fValue)
        return;
    fValue = value;
    // What the user has just moved it to is not sent back: the thumb may have gone on since.
    if (fValue != fShownValue)
        ShowState();
    ValueChanged(value);
}

void BScrollBar::ValueChanged(float newValue)
{
    if (!fTarget)
        return;
    const BPoint now = fTarget->LeftTop();
    if (fOrientation == B_VERTICAL)
        fTarget->ScrollTo(now.x, newValue);
    else
        fTarget->ScrollTo(newValue, now.y);
}

void BScrollBar::SetRange(float min, float max)
{
    CheckLocked();
    fMin = min;
    fMax = std::max(min, max);
    ShowState();
    // The value may lie outside now: cutting it scrolls the target.
    SetValue(fValue);
}

void BScrollBar::GetRange(float* min, float* max) const
{
    if (min)
        *min = fMin;
    if (max)
        *max = fMax;
}

void BScrollBar::SetProportion(float proportion)
{
    fProportion = std::clamp(proportion, 0.0f, 1.0f);
    ShowState();
}

void BScrollBar::SetSteps(float smallStep, float largeStep)
{
    fSmallStep = smallStep;
    fLargeStep = largeStep;
    ShowState();
}

void BScrollBar::GetSteps(float* smallStep, float* largeStep) const
{
    if (smallStep)
        *smallStep = fSmallStep;
    if (largeStep)
        *largeStep = fLargeStep;
}

void BScrollBar::MakeWidget(ViewPeer& peer)
{
    auto* bar = new ScrollBarWidget(
        fOrientation == B_VERTICAL ? Qt::Vertical : Qt::Horizontal, peer.parent);
    peer.widget = bar;
    Equip(peer, Name(), ViewEvents::Kind::kControl);
    ShowStateIn(peer);
    QObject::connect(bar, &QScrollBar::valueChanged, bar, [link = peer.link](int value) {
        BMessage report(kMsgWidgetChanged);
        report.AddFloat("be:value", static_cast<float>(value));
        link->PostLatest(report);
    });
}

void BScrollBar::ShowState()
{
    if (Peer())
        display::Call([this] { ShowStateIn(*Peer()); });
}

void BScrollBar::ShowStateIn(ViewPeer& peer)
{
    auto* bar = static_cast<ScrollBarWidget*>(peer.widget);
    const bool wasBlocked = bar->blockSignals(true); // only the user's changes are reported
    bar->setRange(Whole(fMin), Whole(fMax));
    bar->setPageStep(PageFor(fProportion, fMax - fMin));
    bar->setSingleStep(std::max(Whole(fSmallStep), 1));
    bar->SetLargeStep(std::max(Whole(fLargeStep), 1));
    bar->setValue(Whole(fValue));
    bar->setEnabled(fMax > fMin);
    bar->blockSignals(wasBlocked);
    fShownValue = fValue;
}

void BScrollBar::WidgetChanged(BMessage* report)
{
    float value = fValue;
    report->FindFloat("be:value", &value);
    fShownValue = value;
    SetValue(value);
}
