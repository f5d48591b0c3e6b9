#include "results/ChartPicture.h"

#include "results/ComparisonChart.h"
#include "results/CpuColor.h"

#include <Picture.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

// The chart keeps the coordinates that it has in a window; the header is above them.
constexpr float kTop = -56;
constexpr float kTitleBaseline = -36;
constexpr float kLegendTop = -26;
constexpr float kLeft = 10;
constexpr float kTitleSize = 14;
constexpr float kBarsWidth = 400;
constexpr float kMostBarsX = 800;
constexpr float kMostHeight = 8000; // a PNG of that has some 150 megabytes in memory

// The lowest machines that do not fit are left out.
struct Rows {
    float bottom;
    int32 missing = 0;

    explicit Rows(Comparison& comparison) : bottom(ComparisonChart::kFirstRowY)
    {
        for (const Results* machine : comparison.InOrder()) {
            if (missing > 0 || bottom + machine->RowHeight() > kMostHeight)
                missing++;
            else
                bottom += machine->RowHeight();
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
    view.DrawString(title, BPoint(kLeft, kTitleBaseline));
    view.SetFont(&plain);
    for (int32 i = 0; i < kNbrCpuColors; i++) {
        const float left = kLeft + static_cast<float>(i) * ComparisonChart::kLegendEntryWidth;
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
    BRect area(0, kTop, barsX + kBarsWidth - 1, rows.bottom + footer - 1);
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
