#include "ui/CompareView.h"

#include "foundation/LibString.h"
#include "results/ComparisonChart.h"
#include "toolkit/LibColorChooser.h"

#include <ScrollBar.h>
#include <Window.h>

#include <algorithm>

namespace {

constexpr float kRowHeight = ComparisonChart::kRowHeight;

} // namespace

CompareResultsView::CompareResultsView(BRect frame, Comparison& shown)
    : BView(frame, "DrawView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      comparison(shown)
{
    SetViewColor(white_color);
    SetLowColor(white_color);
    SetFontSize(ComparisonChart::kFontSize);
}

void CompareResultsView::CompareByRatio(const bool& ratio)
{
    comparison.byRatio = ratio;
    UpdateMaxScale();
}

void CompareResultsView::Save()
{
    Window()->PostMessage(kMsgSave);
}

void CompareResultsView::Redraw()
{
    const float visible = Bounds().Height();
    const float height = ChartHeight();
    if (BScrollBar* bar = ScrollBar(B_VERTICAL)) {
        bar->SetRange(0, std::max(0.0f, height - visible));
        bar->SetProportion(visible / std::max(height, 1.0f));
        bar->SetSteps(kRowHeight, std::max(kRowHeight, visible - kRowHeight));
    }
    Invalidate();
}

// The height of all rows, at least the view's own.
float CompareResultsView::ChartHeight() const
{
    return std::max(ComparisonChart(comparison).Height(), Bounds().Height());
}

void CompareResultsView::Draw(BRect update)
{
    ComparisonChart(comparison).Draw(this, update);
    if (!comparison.selected)
        return;
    LibString text("Selected: "); // beyond the edge, where nobody sees it: for a screen reader
    text.Concat(comparison.selected->description);
    DrawString(text, BPoint(Bounds().right + 1, 0));
}

void CompareResultsView::MouseDown(BPoint where)
{
    // The arrow keys go on from what was clicked.
    MakeFocus();
    // A hit at a picture folds its row out or in, so the chart has another height.
    if (comparison.machines.Contains(where))
        return Redraw();
    for (Results& machine : comparison.machines) {
        // Beside the picture: percents refer to this machine from now on.
        if (where.y >= machine.frame.top && where.y < machine.frame.top + machine.RowHeight())
            return Select(&machine);
    }
}

void CompareResultsView::Select(Results* machine)
{
    if (!machine)
        return;
    comparison.selected = machine;
    // Percents refer to this machine, so the scale changes with it.
    UpdateMaxScale();
    Redraw();
}

void CompareResultsView::KeyDown(const char* bytes, int32 numBytes)
{
    const float page = std::max(kRowHeight, Bounds().Height() - kRowHeight);
    switch (bytes[0]) {
        case 'S':
        case 's': Save(); break;
        case B_LEFT_ARROW: Select(comparison.NextToSelected(false)); break;
        case B_RIGHT_ARROW: Select(comparison.NextToSelected(true)); break;
        case B_ENTER:
            // As a click at the picture does.
            if (Results* machine = comparison.selected;
                machine && machine->Contains(machine->frame.LeftTop()))
                Redraw();
            break;
        case B_UP_ARROW: Scroll(-kRowHeight); break;
        case B_DOWN_ARROW: Scroll(kRowHeight); break;
        case B_PAGE_UP: Scroll(-page); break;
        case B_PAGE_DOWN: Scroll(page); break;
        // The chart's height is further than there is room for: the bar stops at its ends.
        case B_HOME: Scroll(-ChartHeight()); break;
        case B_END: Scroll(ChartHeight()); break;
        default: BView::KeyDown(bytes, numBytes); break;
    }
}

void CompareResultsView::Scroll(float distance)
{
    if (BScrollBar* bar = ScrollBar(B_VERTICAL))
        bar->SetValue(bar->Value() + distance);
}

void CompareResultsView::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    Redraw();
}

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
        if (!IsFocus() || i != cursor)
            continue;
        StrokeLine(frame.LeftBottom(), BPoint(frame.right - kEntryGap, frame.bottom));
        // Beyond the edge, where nobody sees it: for a screen reader.
        DrawString(text, BPoint(Bounds().right + 1, kEntryTop + ComparisonChart::kLegendBaseline));
    }
}

void CompareView::MouseDown(BPoint where)
{
    if (where.x >= 0 && where.x < kEntryWidth * static_cast<float>(kNbrCpuColors))
        Choose(static_cast<int32>(where.x / kEntryWidth));
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
        window->SetPosition(kCentred);
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
