#include "results/RunComparison.h"

#include "foundation/PlainText.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace {

using statistics::Untold;

// The series of a machine, by test and by processor count from the greatest.
using Place = std::pair<const TestType*, int32>;
// All tests lie in the catalogue, one array: their addresses have its order.
struct InOrder {
    bool operator()(const Place& a, const Place& b) const
    {
        return std::tuple(a.first, -a.second) < std::tuple(b.first, -b.second);
    }
};
using SeriesByPlace = std::map<Place, const Series*, InOrder>;

// Tells from which machines a best probe holds for each other.
using Kind = std::pair<std::string, std::string>;
Kind KindOf(const RunRecord& record)
{
    return { record.machine, record.details.processorModel.value_or("") };
}

// A machine with what each of its rows asks for.
struct Side {
    const RunRecord* record = nullptr;
    Probe bestProbe;
    SeriesByPlace series;
    std::set<int32> counts;
};

Side SideOf(const RunRecord& record, const TestFilter& isWanted)
{
    Side side { &record, record.bestProbe, {}, {} };
    for (const Series& series : record.series) {
        side.counts.insert(series.processors);
        if (isWanted(*series.test))
            side.series[{ series.test, series.processors }] = &series;
    }
    return side;
}

const Series* At(const Side& side, const Place& place)
{
    const auto found = side.series.find(place);
    return found != side.series.end() ? found->second : nullptr;
}

std::string WhyNot(const Series* series)
{
    if (!series)
        return "not measured";
    if (!series->undone.empty())
        return "its work was not done: " + series->undone;
    // Spans there are, yet no figures: one of them has a time of 0.
    return series->spans.empty() ? "not measured" : "a time that is none";
}

struct Measured {
    ComparedSide side;
    std::vector<double> times; // those on which the figures rest
    double work = 0;
    std::string why; // there are none
};

Measured Measure(const Series* series, const Probe& best)
{
    Measured measured;
    const auto figures = series && series->undone.empty() ? FiguresOf(*series, best) : std::nullopt;
    if (!figures) {
        measured.why = WhyNot(series);
        return measured;
    }
    measured.side = { RateOf(*series, figures->summary.estimate), figures->summary.n,
        figures->marks };
    // The same times as in FiguresOf(): the verdict has to be about those whose rate the row shows.
    measured.times = figures->marks.shared ? TimesOf(*series) : CleanTimesOf(*series, best);
    measured.work = series->spans.front().work;
    return measured;
}

// The other tests draw nothing, so they can be compared whatever the display was.
bool IsOfGraphics(const TestType& test)
{
    return test.group == catalogue::kGraphics;
}

std::string ServerOf(const RunRecord& record)
{
    return record.display ? record.display->vendor : "";
}

std::optional<Untold> DifferenceOf(const RunRecord& a, const RunRecord& b, const TestType& test)
{
    if (a.build.version != b.build.version)
        return Untold::kOtherVersion;
    if (a.build.compiler != b.build.compiler || a.build.flags != b.build.flags)
        return Untold::kOtherCompiler;
    if (IsOfGraphics(test) && (a.displaySize != b.displaySize || ServerOf(a) != ServerOf(b)))
        return Untold::kOtherDisplay;
    return {};
}

std::optional<Untold> MarkOf(const ComparedSide& baseline, const ComparedSide& candidate)
{
    // In the order of the reasons in docs/comparing.md.
    if (baseline.marks.few || candidate.marks.few)
        return Untold::kTooFewRepeats;
    if (baseline.marks.ForbidVerdict() || candidate.marks.ForbidVerdict())
        return Untold::kMarked;
    return {};
}

std::string WhyText(const ComparedRow& row)
{
    switch (*row.judgement.untold) {
        case Untold::kOtherVersion: return "another version";
        case Untold::kOtherCompiler: return "another compiler";
        case Untold::kOtherDisplay: return "another display";
        case Untold::kTooFewRepeats: return "too few repeats";
        case Untold::kMarked: break;
    }
    const std::string baseline = MarksText(row.baseline.marks);
    const std::string candidate = MarksText(row.candidate.marks);
    if (baseline.empty() || baseline == candidate)
        return candidate + (baseline.empty() ? "" : ", both");
    return "baseline " + baseline + (candidate.empty() ? "" : "; " + candidate);
}

// The rows of a table while it is put together.
class Table {
public:
    void Add(size_t machine, const Place& place, const Side& baseline, const Side& candidate)
    {
        Measured before = Measure(At(baseline, place), baseline.bestProbe);
        Measured after = Measure(At(candidate, place), candidate.bestProbe);
        ComparedRow& row = fRows.emplace_back();
        row.test = place.first;
        row.processors = place.second;
        row.machine = machine;
        row.baseline = before.side;
        row.candidate = after.side;
        // One for every row, also where nothing can be told: Judge() puts the two together by
        // index.
        statistics::Row& asked = fAsked.emplace_back();
        // Work of 0 means that the figure is the time itself. No factor makes such a time
        // comparable to one for counted work.
        if (!before.why.empty())
            row.why = "baseline " + before.why;
        else if (!after.why.empty())
            row.why = after.why;
        else if ((before.work > 0) != (after.work > 0))
            row.why = "another amount of work";
        asked.least = LeastDifference(*row.test);
        asked.untold = DifferenceOf(*baseline.record, *candidate.record, *row.test);
        if (!asked.untold)
            asked.untold = MarkOf(row.baseline, row.candidate);
        if (!row.why.empty()) {
            asked.untold = Untold::kTooFewRepeats; // there are none
            return;
        }
        // A test of a fixed duration counts the work that was done in it. Its times would be equal
        // by design, so they are brought to the work of the baseline.
        if (before.work != after.work) {
            for (double& seconds : after.times)
                seconds *= before.work / after.work;
        }
        asked.baseline = std::move(before.times);
        asked.candidate = std::move(after.times);
    }

    std::vector<ComparedRow> Judge()
    {
        const std::vector<statistics::Judgement> judgements = statistics::Judge(fAsked);
        for (size_t i = 0; i < fRows.size(); i++) {
            ComparedRow& row = fRows[i];
            row.judgement = judgements[i];
            if (row.judgement.speed)
                row.percent = 100 * *row.judgement.speed;
            if (row.judgement.untold && row.why.empty())
                row.why = WhyText(row);
        }
        return std::move(fRows);
    }

private:
    std::vector<ComparedRow> fRows;
    std::vector<statistics::Row> fAsked;
};

// The places that one of the two has, at counts that both have.
std::set<Place, InOrder> PlacesOf(const Side& a, const Side& b)
{
    std::set<Place, InOrder> places;
    for (const Side* side : { &a, &b }) {
        for (const auto& [place, series] : side->series) {
            if (a.counts.contains(place.second) && b.counts.contains(place.second))
                places.insert(place);
        }
    }
    return places;
}

} // namespace

std::vector<Probe> BestProbes(const std::vector<MeasuredMachine>& machines)
{
    std::map<Kind, Probe> ofKinds;
    for (const MeasuredMachine& machine : machines) {
        const Probe& probe = machine.record.bestProbe;
        const auto [best, isNew] = ofKinds.emplace(KindOf(machine.record), probe);
        best->second = BestOf(best->second, probe);
    }
    std::vector<Probe> best;
    for (const MeasuredMachine& machine : machines)
        best.push_back(ofKinds.at(KindOf(machine.record)));
    return best;
}

std::vector<ComparedRow> CompareMachines(
    const std::vector<MeasuredMachine>& machines, size_t baseline, const TestFilter& isWanted)
{
    const std::vector<Probe> bestProbes = BestProbes(machines);
    const auto sideOf = [&](size_t machine) {
        Side side = SideOf(machines[machine].record, isWanted);
        side.bestProbe = bestProbes[machine];
        return side;
    };
    const Side before = sideOf(baseline);
    Table table;
    for (size_t i = 0; i < machines.size(); i++) {
        if (i == baseline)
            continue;
        const Side after = sideOf(i);
        for (const Place& place : PlacesOf(before, after))
            table.Add(i, place, before, after);
    }
    std::vector<ComparedRow> rows = table.Judge();
    SortRows(rows, SortBy::kTest, machines);
    return rows;
}

std::optional<double> ClockPercent(const RunRecord& baseline, const RunRecord& record)
{
    const auto before = MedianClock(baseline);
    const auto after = MedianClock(record);
    if (KindOf(baseline) != KindOf(record) || !before || !after)
        return std::nullopt;
    return 100 * *before / *after;
}

void SortRows(
    std::vector<ComparedRow>& rows, SortBy by, const std::vector<MeasuredMachine>& machines)
{
    // No two rows are equal in this, so it ends every tie: std::sort may leave equal rows in any
    // order.
    const auto byTest = [](const ComparedRow& row) {
        return std::tuple(row.test, -row.processors, row.machine);
    };
    std::sort(rows.begin(), rows.end(), [&](const ComparedRow& a, const ComparedRow& b) {
        // Rows without a percent go to the end.
        if (by == SortBy::kPercent && a.percent != b.percent)
            return a.percent && (!b.percent || *a.percent < *b.percent);
        if (by == SortBy::kName && a.machine != b.machine)
            return machines[a.machine].name < machines[b.machine].name;
        return byTest(a) < byTest(b);
    });
}

BuildCheck CheckBuild(const std::vector<ComparedRow>& rows, size_t machines, double percent)
{
    std::set<size_t> withRows;
    bool isTold = true;
    for (const ComparedRow& row : rows) {
        // A test that fell is reason enough, whatever could not be told of others. Where it is
        // slower there are figures of both sides, and with them a percent.
        if (row.judgement.verdict == statistics::Verdict::kSlower && 100 - *row.percent > percent)
            return BuildCheck::kFell;
        isTold = isTold && row.judgement.verdict != statistics::Verdict::kCannotTell;
        withRows.insert(row.machine);
    }
    // A machine without rows has nothing in common with the baseline: that is no pass.
    return isTold && withRows.size() + 1 == machines ? BuildCheck::kPassed
                                                     : BuildCheck::kCannotTell;
}

const char* VerdictText(statistics::Verdict verdict)
{
    switch (verdict) {
        case statistics::Verdict::kFaster: return "faster";
        case statistics::Verdict::kSlower: return "slower";
        case statistics::Verdict::kNoRealDifference: return "no real difference";
        case statistics::Verdict::kCannotTell: break;
    }
    return "cannot tell";
}
