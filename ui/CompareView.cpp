#include "ui/CompareView.h"

#include "foundation/LibString.h"
#include "results/ComparisonChart.h"
#include "toolkit/LibColorChooser.h"

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
}

CompareView::~CompareView() = default;

BRect CompareView::FrameOf(int32 index) const
{
    const float left = static_cast<float>(index) * kEntryWidth;
    return BRect(left, 0, left + kEntryWidth - 1, Bounds().bottom);
}

void CompareView::Draw(BRect)
{
    for (int32 i = 0; i < kNbrCpuColors; i++) {
        const BRect frame = FrameOf(i);
        const LibString text = ComparisonChart::DrawLegendEntry(
            this, BPoint(frame.left, kEntryTop), i, ui_color(B_PANEL_TEXT_COLOR));
        if (!HasKeyboard() || i != cursor)
            continue;
        StrokeLine(frame.LeftBottom(), BPoint(frame.right - kEntryGap, frame.bottom));
        // Beyond the edge, where nobody sees it: for a screen reader.
        DrawString(text, BPoint(Bounds().right + 1, kEntryTop + ComparisonChart::kLegendBaseline));
    }
}

void CompareView::MouseDown(BPoint where)
{
    if (const auto index = static_cast<int32>(where.x / kEntryWidth); index < kNbrCpuColors)
        Choose(index);
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
    // The line below an entry is there only while the keys are for the legend.
    Invalidate();
}

void CompareView::WindowActivated(bool)
{
    Invalidate();
}

void CompareView::MoveCursor(int32 step)
{
    cursor = std::clamp(cursor + step, static_cast<int32>(0), kNbrCpuColors - 1);
    Invalidate();
}

void CompareView::Choose(int32 index)
{
    chooser.End(); // it is for one colour
    cursor = index;
    chooser.Show([this, index] {
        LibString title;
        title.Formatted("Color of %d CPU", index + 1);
        auto* window = new LibColorChooser(Window(), title, cpu_color[index]);
        window->SetPositionOver(Window()->Frame());
        return window;
    });
    // After the former one has ended: what it may still say is for another colour.
    chosen = index;
}

void CompareView::CloseChooser()
{
    chooser.End();
}

void CompareView::ChooserClosed(const BMessage& closing)
{
    if (!chooser.IsFrom(closing))
        return;
    // Before it ends: the colour is the window's.
    chooser.With([this](LibColorChooser& window) { cpu_color[chosen] = window.Color(); });
    CloseChooser();
    Invalidate();
}
