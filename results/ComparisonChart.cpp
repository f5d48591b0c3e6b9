#include "results/ComparisonChart.h"

#include "results/TestCatalogue.h"

#include <Picture.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr float kTitleBaseline = 10;
constexpr float kTitleLineY = 14;
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
    float height = kFirstRowY;
    for (const Results& machine : comparison.machines)
        height += machine.RowHeight();
    return height;
}

void ComparisonChart::Draw(BView* view, BRect update)
{
    view->SetHighColor(black_color);
    view->DrawString("Configuration", BPoint(10, kTitleBaseline));
    DrawGrid(view, update);
    DrawCaption(view);
    float y = kFirstRowY;
    for (Results& machine : comparison.machines) {
        machine.Draw(view, update, barsX, comparison.scale.maxScale, cpu_color.data(), y,
            &machine == comparison.selected, comparison.ratioBase);
    }
}

// Lines reach over the update only: the whole chart's height may be more than a display can count.
void ComparisonChart::DrawGrid(BView* view, BRect update) const
{
    const float right = view->Bounds().Width();
    const float bottom = update.bottom;
    view->SetHighColor(black_color);
    view->StrokeLine(BPoint(0, kTitleLineY), BPoint(right, kTitleLineY));
    view->StrokeLine(BPoint(barsX, std::max(0.0f, update.top)), BPoint(barsX, bottom));

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
            view->DrawString(label, BPoint(x - labelWidth / 2, kTitleBaseline));
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
    view->DrawString(caption, BPoint(110, kTitleBaseline));
}

LibString ComparisonChart::DrawLegendEntry(
    BView* view, BPoint leftTop, int32 index, rgb_color textColor)
{
    const BRect swatch(leftTop, leftTop + BPoint(kSwatch, kSwatch));
    view->SetHighColor(cpu_color[index]);
    view->FillRect(swatch);
    view->SetHighColor(textColor);
    view->StrokeRect(swatch);
    LibString text;
    text.Formatted("%d CPU", index + 1);
    view->DrawString(text, BPoint(swatch.right + 5, leftTop.y + kLegendBaseline));
    return text;
}

namespace {

// The chart keeps the coordinates that it has in a window; the header is above them.
constexpr float kPictureTop = -56;
constexpr float kHeadingBaseline = -36;
constexpr float kLegendTop = -26;
constexpr float kPictureLeft = 10;
constexpr float kTitleSize = 14;
constexpr float kBarsWidth = 400;
constexpr float kMostBarsX = 800;
constexpr float kMostHeight = 8000; // a PNG of that has some 150 megabytes in memory

// The lowest machines that do not fit are left out.
struct Rows {
    float bottom;
    int32 missing = 0;

    explicit Rows(const Comparison& comparison) : bottom(ComparisonChart::kFirstRowY)
    {
        for (const Results& machine : comparison.machines) {
            if (missing > 0 || bottom + machine.RowHeight() > kMostHeight)
                missing++;
            else
                bottom += machine.RowHeight();
        }
    }
};

// Whoever looks at an SVG may have a font that is a little wider.
float BarsX(const Comparison& comparison, const BFont& font)
{
    constexpr float kSpare = 1.05f;
    constexpr float kGap = 10;
    float width = 0;
    for (const Results& machine : comparison.machines)
        width = std::max(width, font.StringWidth(machine.description));
    return std::clamp(
        ComparisonChart::kNamesX + width * kSpare + kGap, ComparisonChart::kBarsX, kMostBarsX);
}

std::string TitleOf(const Comparison& comparison, const Metric& shown)
{
    std::string title(shown.description);
    if (comparison.ratioBase > 0)
        title.append(", percent of ").append(comparison.selected->description);
    return title;
}

void DrawHeader(BView& view, const BFont& plain, const char* title)
{
    BFont bold(be_bold_font);
    bold.SetSize(kTitleSize);
    view.SetFont(&bold);
    view.SetHighColor(black_color);
    view.DrawString(title, BPoint(kPictureLeft, kHeadingBaseline));
    view.SetFont(&plain);
    for (int32 i = 0; i < kNbrCpuColors; i++) {
        const float left =
            kPictureLeft + static_cast<float>(i) * ComparisonChart::kLegendEntryWidth;
        ComparisonChart::DrawLegendEntry(&view, BPoint(left, kLegendTop), i, black_color);
    }
}

void DrawMissing(BView& view, const Rows& rows)
{
    LibString text;
    text.Formatted("and %d more machines", rows.missing);
    view.SetHighColor(black_color);
    view.DrawString(text, BPoint(ComparisonChart::kNamesX, rows.bottom + 12));
}

std::string Write(const char* path, Comparison& comparison)
{
    if (std::string reason = WhyNoPicture(path); !reason.empty())
        return reason;
    const Results* first = comparison.machines.First();
    const Metric* shown = first ? first->Current() : nullptr;
    if (!shown)
        return "no test is chosen";

    BPicture picture; // before anything is measured
    BFont font(be_plain_font);
    font.SetSize(ComparisonChart::kFontSize);
    const Rows rows(comparison);
    const std::string title = TitleOf(comparison, *shown);
    const float barsX = BarsX(comparison, font);
    const float footer = rows.missing > 0 ? ComparisonChart::kRowHeight : 0;
    BRect area(0, kPictureTop, barsX + kBarsWidth - 1, rows.bottom + footer - 1);
    BView view(area, "picture", B_FOLLOW_NONE, B_WILL_DRAW);
    view.ScrollTo(area.LeftTop());
    view.BeginPicture(&picture);
    DrawHeader(view, font, title.c_str());
    area.bottom = rows.bottom - 1;
    ComparisonChart(comparison, barsX).Draw(&view, area);
    if (rows.missing > 0)
        DrawMissing(view, rows);
    view.EndPicture();
    return WritePicture(path, picture, view.Bounds(), title.c_str());
}

} // namespace

bool WriteChartPicture(const char* path, Comparison& comparison)
{
    const std::string reason = Write(path, comparison);
    if (!reason.empty())
        fprintf(stderr, "Error writing <%s>: %s\n", path, reason.c_str());
    return reason.empty();
}
