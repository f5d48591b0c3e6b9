#include "StatusBar.h"

#include "server/DisplayServer.h"
#include "server/ViewPeer.h"

#include <QProgressBar>

#include <algorithm>

namespace {

constexpr int kBarSteps = 1000; // more than a bar has pixels

int StepsOf(float value, float max)
{
    return static_cast<int>(value / max * kBarSteps);
}

} // namespace

BStatusBar::BStatusBar(BRect frame, const char* name, uint32 resizeMode)
    : BView(frame, name, resizeMode, B_WILL_DRAW)
{
    BView::SetViewColor(B_TRANSPARENT_COLOR);
}

void BStatusBar::AttachedToWindow()
{
    TakeParentsColor();
}

void BStatusBar::SetMaxValue(float max)
{
    if (!(max > 0))
        return;
    fMax = max;
    fCurrent = std::min(fCurrent, fMax);
    ShowValue();
}

void BStatusBar::Update(float delta)
{
    fCurrent = std::clamp(fCurrent + delta, 0.0f, fMax);
    ShowValue();
}

void BStatusBar::Reset()
{
    fMax = 100;
    fCurrent = 0;
    ShowValue();
}

void BStatusBar::ShowValue()
{
    if (!Peer())
        return;
    display::Call(
        [this] { static_cast<QProgressBar*>(Peer()->widget)->setValue(StepsOf(fCurrent, fMax)); });
}

void BStatusBar::MakeWidget(ViewPeer& peer)
{
    auto* bar = new QProgressBar(peer.parent);
    bar->setRange(0, kBarSteps);
    bar->setValue(StepsOf(fCurrent, fMax));
    bar->setTextVisible(false);
    peer.widget = bar;
    Equip(peer, Name(), ViewEvents::Kind::kView);
}
