#include "results/ComparisonChart.h"

#include "results/TestCatalogue.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr float kHeadBaseline = 10;
constexpr float kLabelGap = 2;
constexpr float kSwatch = 14;
constexpr rgb_color kLabelledLine = { 128, 128, 128, 255 };
constexpr rgb_color kPlainLine = { 216, 216, 216, 255 };

constexpr std::array<rgb_color, kNbrCpuColors> kColors { {
    { 0, 0, 200, 0 },
    { 0, 178, 0, 0 },
    { 203, 102, 255, 0 },
    { 51, 203, 152, 0 },
    { 102, 203, 255, 0 },
    { 228, 0, 0, 0 },
    { 255, 152, 0, 0 },
    { 0, 255, 0, 0 },
} };

} // namespace

std::array<rgb_color, kNbrCpuColors> cpu_color = kColors;

void ResetCpuColors()
{
    cpu_color = kColors;
}

float ComparisonChart::Height() const
{
    const std::vector<float>& bottoms = comparison.RowBottoms();
    return bottoms.empty() ? kFirstRowY : bottoms.back();
}

void ComparisonChart::Draw(BView* view, BRect update)
{
    view->SetHighColor(black_color);
    view->DrawString("Configuration", BPoint(10, kHeadBaseline));
    DrawGrid(view, update);
    DrawCaption(view);
    const std::vector<float>& bottoms = comparison.RowBottoms();
    const std::vector<Results*>& machines = comparison.InOrder();
    const auto first = std::lower_bound(bottoms.begin(), bottoms.end(), update.top);
    float y = first == bottoms.begin() ? kFirstRowY : *(first - 1);
    for (auto i = static_cast<size_t>(first - bottoms.begin());
         i < machines.size() && y <= update.bottom; i++) {
        machines[i]->Draw(view, update, barsX, comparison.scale.maxScale, cpu_color.data(), y,
            machines[i] == comparison.selected, comparison.ratioBase);
    }
}

// Lines reach over the update only: the whole chart's height may be more than a display can count.
void ComparisonChart::DrawGrid(BView* view, BRect update) const
{
    const float right = view->Bounds().Width();
    const float bottom = update.bottom;
    view->StrokeLine(BPoint(0, kTitleLineY), BPoint(right, kTitleLineY));
    view->StrokeLine(BPoint(barsX, std::max(lineTop, update.top)), BPoint(barsX, bottom));

    const ChartScale& scale = comparison.scale;
    float labelX = barsX;
    float labelWidth = 0;
    for (int64 value = scale.step; value < static_cast<int64>(scale.maxScale);
         value += scale.step) {
        const float x = scale.XFor(static_cast<double>(value), barsX, right);
        // Labels are centred on their lines: from one to the next is a width, and 0.4 for the gap.
        const bool isLabelled = x > labelX + 1.4f * labelWidth;
        if (isLabelled) {
            LibString label;
            label.Formatted("%lld", static_cast<long long>(value));
            labelX = x;
            labelWidth = view->StringWidth(label);
            view->SetHighColor(black_color);
            // Centred, but neither over the line where the bars begin nor beyond the edge.
            const float first = barsX + kLabelGap;
            const float last = std::max(first, right - labelWidth);
            view->DrawString(
                label, BPoint(std::clamp(x - labelWidth / 2, first, last), kHeadBaseline));
        }
        view->SetHighColor(isLabelled ? kLabelledLine : kPlainLine);
        const float top = std::max(isLabelled ? kTitleLineY - 2 : kTitleLineY, update.top);
        view->StrokeLine(BPoint(x, top), BPoint(x, bottom));
    }
}

// What the bars show, in the first machine's unit.
void ComparisonChart::DrawCaption(BView* view) const
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
    view->SetHighColor(black_color);
    view->DrawString(caption, BPoint(110, kHeadBaseline));
}

LibString ComparisonChart::DrawLegendEntry(
    BView* view, BPoint leftTop, int32 index, rgb_color textColor, int32 processors)
{
    const BRect swatch(leftTop, leftTop + BPoint(kSwatch, kSwatch));
    view->SetHighColor(cpu_color[index]);
    view->FillRect(swatch);
    view->SetHighColor(textColor);
    view->StrokeRect(swatch);
    LibString text;
    text.Formatted("%d CPU", processors > 0 ? processors : index + 1);
    view->DrawString(text, BPoint(swatch.right + 5, leftTop.y + kLegendBaseline));
    return text;
}
