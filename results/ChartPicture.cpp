#include "results/ChartPicture.h"

#include "results/ComparisonChart.h"
#include "sysinfo/LibSysInfo.h"

#include <Picture.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>
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

// Whoever looks at an SVG may have a font that is a little wider. A whole number, as all of a
// picture is on the ground.
float BarsX(const Comparison& comparison, const BFont& font)
{
    constexpr float kSpare = 1.05f;
    constexpr float kGap = 10;
    float width = 0;
    for (const Results& machine : comparison.machines)
        width = std::max(width, font.StringWidth(machine.description));
    return std::clamp(std::ceil(ComparisonChart::kNamesX + width * kSpare + kGap),
        ComparisonChart::kBarsX, kMostBarsX);
}

std::string TitleOf(const Comparison& comparison, const Metric& shown)
{
    std::string title(shown.description);
    const TestType* test = FindTestType(shown.index);
    if (comparison.ratioBase > 0)
        title.append(", percent of ").append(comparison.selected->description);
    else if (test && test->better == Better::kLess)
        title.append(" (less is better)");
    return title;
}

// What the colours stand for, the first one first.
using Counts = std::vector<int32>;
const Counts kCounts { 1, 2, 3, 4, 5, 6, 7, 8 };
static_assert(kNbrCpuColors == 8);

void DrawHeader(BView& view, const BFont& plain, const char* title, const Counts& counts)
{
    BFont bold(be_bold_font);
    bold.SetSize(kTitleSize);
    view.SetFont(&bold);
    view.SetHighColor(black_color);
    view.DrawString(title, BPoint(kLeft, kTitleBaseline));
    view.SetFont(&plain);
    for (size_t i = 0; i < counts.size(); i++) {
        const float left = kLeft + static_cast<float>(i) * ComparisonChart::kLegendEntryWidth;
        ComparisonChart::DrawLegendEntry(
            &view, BPoint(left, kLegendTop), static_cast<int32>(i), black_color, counts[i]);
    }
}

void DrawNote(BView& view, const std::string& note, float bottom)
{
    view.SetHighColor(black_color);
    view.DrawString(note.c_str(), BPoint(ComparisonChart::kNamesX, bottom + 12));
}

std::string Write(
    const char* path, Comparison& comparison, const Counts& counts, const std::string& note)
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
    std::vector<std::string> notes;
    if (rows.missing > 0)
        notes.push_back("and " + std::to_string(rows.missing)
            + (rows.missing > 1 ? " more machines" : " more machine"));
    if (!note.empty())
        notes.push_back(note);
    const std::string title = TitleOf(comparison, *shown);
    const float barsX = BarsX(comparison, font);
    const float footer = static_cast<float>(notes.size()) * ComparisonChart::kRowHeight;
    BRect area(0, kTop, barsX + kBarsWidth - 1, rows.bottom + footer - 1);
    BView view(area, "picture", B_FOLLOW_NONE, B_WILL_DRAW);
    view.ScrollTo(area.LeftTop());
    view.BeginPicture(&picture);
    DrawHeader(view, font, title.c_str(), counts);
    area.bottom = rows.bottom - 1;
    // The first label may stand across that line, and is to be read.
    ComparisonChart(comparison, barsX, ComparisonChart::kTitleLineY).Draw(&view, area);
    float below = rows.bottom;
    for (const std::string& each : notes) {
        DrawNote(view, each, below);
        below += ComparisonChart::kRowHeight;
    }
    view.EndPicture();
    return WritePicture(path, picture, view.Bounds(), title.c_str());
}

// The counts of all machines that the colours are for.
Counts CountsOf(const std::vector<MeasuredMachine>& machines, const TestType& test)
{
    std::set<int32> all;
    for (const MeasuredMachine& machine : machines) {
        for (const Series& series : machine.record.series) {
            if (series.test == &test && series.undone.empty())
                all.insert(series.processors);
        }
    }
    return all.empty() || *all.rbegin() <= kNbrCpuColors ? kCounts : Counts(all.begin(), all.end());
}

// The machine's metric of the test, with a slot for each count; null where it has no figure.
std::unique_ptr<Metric> MetricOf(
    const RunRecord& run, const TestType& test, const Probe& best, const Counts& counts)
{
    auto metric = std::make_unique<Metric>();
    metric->Index(test.id);
    metric->Description(test.name);
    bool hasFigure = false;
    // From the greatest count, as slots go; those before the first that it has are none of its.
    for (auto count = counts.rbegin(); count != counts.rend(); ++count) {
        const Series* series = run.Find(test, *count);
        const auto figures =
            series && series->undone.empty() ? FiguresOf(*series, best) : std::nullopt;
        if (!figures && !hasFigure)
            continue;
        double seconds = 0; // not measured
        if (figures) {
            const double work = series->spans.front().work;
            // Work may be more than a metric holds: so it is the time for one unit.
            seconds = figures->summary.estimate / (work > 0 ? work : 1);
            metric->NbrCycles(work > 0 ? 1 : 0);
            hasFigure = true;
        }
        metric->Time(static_cast<float>(seconds));
    }
    return hasFigure ? std::move(metric) : nullptr;
}

// Seconds as milliseconds where there are few: the chart's first line stands for ten of its unit.
void RefineSeconds(ResultList& machines, const TestType& test)
{
    constexpr double kFew = 10;
    Metric probe;
    probe.Description(test.name);
    machines.MakeCurrent(probe);
    if (std::string_view(test.units) != "seconds"
        || static_cast<double>(machines.MaxRate()) >= kFew)
        return;
    for (Results& machine : machines) {
        for (Metric& metric : machine) {
            metric.Units("milliseconds");
            for (float& time : metric.times)
                time *= 1000;
        }
    }
}

} // namespace

bool WriteChartPicture(const char* path, Comparison& comparison)
{
    const std::string reason = Write(path, comparison, kCounts, "");
    if (!reason.empty())
        fprintf(stderr, "Error writing <%s>: %s\n", path, reason.c_str());
    return reason.empty();
}

std::string WriteMachinesChart(const char* path, const std::vector<MeasuredMachine>& machines,
    size_t baseline, const TestType& test)
{
    Counts counts = CountsOf(machines, test);
    const size_t all = counts.size();
    if (all > kNbrCpuColors) // one processor is what others are held against
        counts.erase(counts.begin() + 1, counts.end() - (kNbrCpuColors - 1));
    const std::string note = all > counts.size()
        ? "of " + std::to_string(all) + " processor counts the least and the seven greatest"
        : "";
    const std::vector<Probe> bestProbes = BestProbes(machines);
    const LibSysInfo thisMachine; // asked once, as there may be thousands
    Comparison comparison;
    for (size_t i = 0; i < machines.size(); i++) {
        auto metric = MetricOf(machines[i].record, test, bestProbes[i], counts);
        if (!metric)
            continue;
        auto results = std::make_unique<Results>(false, thisMachine);
        results->Clear();
        results->description = machines[i].name.c_str();
        results->Insert(std::move(metric));
        Results* added = comparison.machines.Insert(std::move(results));
        if (i == baseline)
            comparison.selected = added;
    }
    RefineSeconds(comparison.machines, test);
    comparison.ChooseTest(test.name);
    return Write(path, comparison, counts, note);
}
