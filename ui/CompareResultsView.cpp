#include "ui/CompareResultsView.h"

#include <algorithm>
#include <cstdio>

#include "results/TestCatalogue.h"
#include "toolkit/MessageBoxes.h"
#include "ui/CompareWin.h"
#include "ui/CpuColor.h"

#include <ScrollBar.h>
#include <WholeFile.h>

namespace {

constexpr float kFontSize = 10;
constexpr float kBarsX = 320;
constexpr float kTitleBaseline = 10;
constexpr float kTitleLineY = 14;
constexpr float kFirstRowY = 19;
constexpr rgb_color kLabelledLine = { 128, 128, 128, 255 };
constexpr rgb_color kPlainLine = { 216, 216, 216, 255 };

// Writing walks the metrics: afterwards the machines get their current ones back.
class CurrentMetrics {
public:
    explicit CurrentMetrics(ResultList& list) : machines(list)
    {
        for (const Results* machine = list.First(); machine; machine = list.Next())
            metrics.push_back(machine->Current());
    }
    ~CurrentMetrics()
    {
        auto metric = metrics.begin();
        for (Results* machine = machines.First(); machine; machine = machines.Next(), ++metric) {
            if (*metric)
                machine->Get(*metric);
        }
    }
    CurrentMetrics(const CurrentMetrics&) = delete;
    CurrentMetrics& operator=(const CurrentMetrics&) = delete;

private:
    ResultList& machines;
    std::vector<const Metric*> metrics;
};

} // namespace

CompareResultsView::CompareResultsView(BRect frame, CompareWin* window)
    : BView(frame, "DrawView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      owner(window)
{
    SetViewColor(white_color);
    SetLowColor(white_color);
    SetFontSize(kFontSize);
}

void CompareResultsView::UpdateMaxScale()
{
    double greatest = machines.MaxRate();
    ratioBase = -1;
    int slot = 0;
    const Metric* base = selected && byRatio ? selected->Current() : nullptr;
    if (base && base->MaxRate(slot) > 0) {
        ratioBase = float(base->MaxRate(slot));
        greatest = 100 * greatest / double(ratioBase);
    }
    scale = ChartScale::For(greatest);
}

void CompareResultsView::CompareByRatio(const bool& ratio)
{
    byRatio = ratio;
    UpdateMaxScale();
}

void CompareResultsView::Redraw()
{
    owner->UpdateScrollBars();
    Invalidate();
}

float CompareResultsView::ChartHeight()
{
    float height = kFirstRowY;
    for (const Results* machine = machines.First(); machine; machine = machines.Next())
        height += machine->RowHeight();
    return std::max(height, Bounds().Height());
}

void CompareResultsView::Draw(BRect update)
{
    SetHighColor(black_color);
    DrawString("Configuration", BPoint(10, kTitleBaseline));
    DrawGrid(update);
    DrawCaption();
    float y = kFirstRowY;
    for (Results* machine = machines.First(); machine; machine = machines.Next()) {
        machine->Draw(
            this, update, kBarsX, scale.maxScale, cpu_color, y, machine == selected, ratioBase);
    }
    if (!selected)
        return;
    LibString text("Selected: "); // beyond the edge, where nobody sees it: for a screen reader
    text.Concat(selected->description);
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
    const Results* first = machines.First();
    const Metric* metric = first ? first->Current() : nullptr;
    if (!metric)
        return;
    LibString caption("( Percent )");
    if (ratioBase <= 0) {
        const char* units = metric->units;
        caption.Formatted("( %s )", *units ? units : MetricUnits(metric->index));
    }
    SetHighColor(black_color);
    DrawString(caption, BPoint(110, kTitleBaseline));
}

void CompareResultsView::MouseDown(BPoint where)
{
    MakeFocus();
    if (!machines.Contains(where)) {
        // Beside the picture: percents refer to this machine from now on.
        Results* machine = machines.First();
        while (machine && where.y >= machine->frame.top + machine->RowHeight())
            machine = machines.Next();
        if (machine && where.y >= machine->frame.top)
            Select(machine);
        return;
    }
    Redraw();
}

void CompareResultsView::Select(Results* machine)
{
    if (!machine)
        return;
    selected = machine;
    UpdateMaxScale();
    Redraw();
}

// Where none is selected, the first machine; null beyond the first and the last.
Results* CompareResultsView::NextToSelected(bool below)
{
    Results* above = nullptr;
    for (Results* machine = machines.First(); machine; machine = machines.Next()) {
        if (machine == selected)
            return below ? machines.Next() : above;
        above = machine;
    }
    return machines.First();
}

void CompareResultsView::KeyDown(const char* bytes, int32 numBytes)
{
    constexpr float kRow = 17;
    const float page = std::max(kRow, Bounds().Height() - kRow);
    switch (bytes[0]) {
        case 'S':
        case 's': Save(); break;
        case B_LEFT_ARROW: Select(NextToSelected(false)); break;
        case B_RIGHT_ARROW: Select(NextToSelected(true)); break;
        case B_ENTER:
            if (selected && selected->Contains(selected->frame.LeftTop()))
                Redraw();
            break;
        case B_UP_ARROW: Scroll(-kRow); break;
        case B_DOWN_ARROW: Scroll(kRow); break;
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

void CompareResultsView::Save()
{
    WholeFile table("Tarvex.compare");
    WriteTable(table.Stream());
    if (table.Commit())
        LibInfo("Tarvex.compare has been created."); // the chart may be drawn meanwhile
    else
        fprintf(stderr, "Error writing <Tarvex.compare>: %s\n", table.Error().c_str());
}

// Leaves every machine's current metric as it was; nothing for a file that could not be opened.
void CompareResultsView::WriteTable(FILE* file)
{
    const CurrentMetrics kept(machines);
    if (Results* first = file ? machines.First() : nullptr) {
        const int columns = machines.MaxNbrCpus();
        first->SaveHeader(file, columns);
        first->SaveUnits(file, columns);
        first->Save(file, columns); // and once more among all of them
        machines.Save(file, columns);
    }
}
