#include "ui/CompareResultsView.h"

#include <algorithm>

#include "results/TestCatalogue.h"
#include "ui/CompareView.h"

#include <ScrollBar.h>
#include <Window.h>

namespace {

constexpr float kFontSize = 10;
constexpr float kBarsX = 320;
constexpr float kTitleBaseline = 10;
constexpr float kTitleLineY = 14;
constexpr float kFirstRowY = 19;
constexpr float kRowHeight = 17; // of a machine that is not opened
constexpr rgb_color kLabelledLine = { 128, 128, 128, 255 };
constexpr rgb_color kPlainLine = { 216, 216, 216, 255 };

} // namespace

CompareResultsView::CompareResultsView(BRect frame, Comparison& shown)
    : BView(frame, "DrawView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      comparison(shown)
{
    SetViewColor(white_color);
    SetLowColor(white_color);
    SetFontSize(kFontSize);
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
    float height = kFirstRowY;
    for (const Results& machine : comparison.machines)
        height += machine.RowHeight();
    return std::max(height, Bounds().Height());
}

void CompareResultsView::Draw(BRect update)
{
    SetHighColor(black_color);
    DrawString("Configuration", BPoint(10, kTitleBaseline));
    DrawGrid(update);
    DrawCaption();
    float y = kFirstRowY;
    for (Results& machine : comparison.machines) {
        machine.Draw(this, update, kBarsX, comparison.scale.maxScale, cpu_color, y,
            &machine == comparison.selected, comparison.ratioBase);
    }
    if (!comparison.selected)
        return;
    LibString text("Selected: "); // beyond the edge, where nobody sees it: for a screen reader
    text.Concat(comparison.selected->description);
    DrawString(text, BPoint(Bounds().right + 1, 0));
}

// Lines reach over the update only: the whole chart's height may be more than a display can count.
void CompareResultsView::DrawGrid(BRect update)
{
    const float right = Bounds().Width();
    const float bottom = update.bottom;
    SetHighColor(black_color);
    StrokeLine(BPoint(0, kTitleLineY), BPoint(right, kTitleLineY));
    StrokeLine(BPoint(kBarsX, std::max(0.0f, update.top)), BPoint(kBarsX, bottom));

    const ChartScale& scale = comparison.scale;
    float labelX = kBarsX;
    float labelWidth = 0;
    for (int64 value = scale.step; value < int64(scale.maxScale); value += scale.step) {
        const float x = scale.XFor(double(value), kBarsX, right);
        const bool isLabelled = x > labelX + 1.4f * labelWidth;
        if (isLabelled) {
            LibString label;
            label.Formatted("%lld", static_cast<long long>(value));
            labelX = x;
            labelWidth = StringWidth(label);
            SetHighColor(black_color);
            DrawString(label, BPoint(x - labelWidth / 2, kTitleBaseline));
        }
        SetHighColor(isLabelled ? kLabelledLine : kPlainLine);
        const float top = std::max(isLabelled ? kTitleLineY - 2 : kTitleLineY, update.top);
        StrokeLine(BPoint(x, top), BPoint(x, bottom));
    }
}

// What the bars show, in the first machine's unit.
void CompareResultsView::DrawCaption()
{
    const Results* first = comparison.machines.First();
    const Metric* metric = first ? first->Current() : nullptr;
    if (!metric)
        return;
    LibString caption("( Percent )");
    if (comparison.ratioBase <= 0) {
        const char* units = metric->units;
        caption.Formatted("( %s )", *units ? units : MetricUnits(metric->index));
    }
    SetHighColor(black_color);
    DrawString(caption, BPoint(110, kTitleBaseline));
}

void CompareResultsView::MouseDown(BPoint where)
{
    MakeFocus();
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
            if (Results* machine = comparison.selected;
                machine && machine->Contains(machine->frame.LeftTop()))
                Redraw();
            break;
        case B_UP_ARROW: Scroll(-kRowHeight); break;
        case B_DOWN_ARROW: Scroll(kRowHeight); break;
        case B_PAGE_UP: Scroll(-page); break;
        case B_PAGE_DOWN: Scroll(page); break;
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
