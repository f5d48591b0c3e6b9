#include "ui/CompareView.h"

#include "foundation/LibString.h"
#include "results/ComparisonChart.h"
#include "results/CpuColor.h"
#include "toolkit/LibColorChooser.h"

#include <Autolock.h>
#include <Window.h>

#include <algorithm>

namespace {

constexpr float kFontSize = 10;
constexpr float kEntryWidth = ComparisonChart::kLegendEntryWidth;
constexpr float kEntryTop = 2;
constexpr float kEntryGap = 10;

} // namespace

CompareView::CompareView(BRect frame)
    : BView(frame, "legend", B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE)
{
    ResetCpuColors();
    SetFontSize(kFontSize);
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}

BRect CompareView::FrameOf(int32 index) const
{
    const float left = float(index) * kEntryWidth;
    return BRect(left, 0, left + kEntryWidth - 1, Bounds().bottom);
}

void CompareView::Draw(BRect)
{
    for (int32 i = 0; i < kNbrCpuColors; i++) {
        const BRect frame = FrameOf(i);
        const LibString text = ComparisonChart::DrawLegendEntry(
            this, BPoint(frame.left, kEntryTop), i, ui_color(B_PANEL_TEXT_COLOR));
        if (!IsFocus() || i != cursor)
            continue;
        StrokeLine(frame.LeftBottom(), BPoint(frame.right - kEntryGap, frame.bottom));
        // Beyond the edge, where nobody sees it: for a screen reader.
        DrawString(text, BPoint(Bounds().right + 1, kEntryTop + ComparisonChart::kLegendBaseline));
    }
}

void CompareView::MouseDown(BPoint where)
{
    if (where.x >= 0 && where.x < kEntryWidth * float(kNbrCpuColors))
        Choose(int32(where.x / kEntryWidth));
}

void CompareView::KeyDown(const char* bytes, int32 numBytes)
{
    switch (bytes[0]) {
        case B_LEFT_ARROW: MoveCursor(-1); break;
        case B_RIGHT_ARROW: MoveCursor(1); break;
        case B_SPACE:
        case B_ENTER: Choose(cursor); break;
        default: BView::KeyDown(bytes, numBytes); break;
    }
}

void CompareView::MakeFocus(bool focus)
{
    BView::MakeFocus(focus);
    Invalidate();
}

void CompareView::MoveCursor(int32 step)
{
    cursor = std::clamp(cursor + step, int32(0), kNbrCpuColors - 1);
    Invalidate();
}

void CompareView::Choose(int32 index)
{
    CloseChooser();
    chosen = cursor = index;
    LibString title;
    title.Formatted("Color of %d CPU", chosen + 1);
    chooser = new LibColorChooser(Window(), title, cpu_color[chosen]);
    chooser->SetPosition(kCentred);
    chooser->Show();
}

void CompareView::CloseChooser()
{
    if (chooser && chooser->Lock())
        chooser->Quit(); // which unlocks: so this is no block
    chooser = nullptr;
    chosen = -1;
}

void CompareView::ChooserClosed()
{
    {
        const BAutolock lock(chooser);
        if (lock.IsLocked() && chosen >= 0)
            cpu_color[chosen] = chooser->Color();
    }
    CloseChooser();
    Invalidate();
}
