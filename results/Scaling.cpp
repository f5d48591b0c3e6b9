#include "results/Scaling.h"

#include <algorithm>

namespace {

// Work in a second, so that more is faster also where the figure is the time itself.
double SpeedOf(const Series& series, const Figures& figures)
{
    const double work = series.spans.front().work;
    return (work > 0 ? work : 1) / figures.summary.estimate;
}

std::vector<ScalingPoint> PointsOf(const RunRecord& run, const TestType& test, const Probe& best)
{
    std::vector<ScalingPoint> points;
    bool hasWork = false;
    for (const Series& series : run.series) {
        const auto figures =
            series.test == &test && series.undone.empty() ? FiguresOf(series, best) : std::nullopt;
        if (!figures)
            continue;
        const bool hasItsOwn = series.spans.front().work > 0;
        if (points.empty())
            hasWork = hasItsOwn;
        if (hasWork != hasItsOwn) // no factor makes the two comparable
            return {};
        const statistics::Marks& marks = figures->marks;
        points.push_back({ series.processors, SpeedOf(series, *figures),
            marks.shared || marks.twoSpeeds || marks.unsteady });
    }
    if (points.size() < 2)
        return {};
    std::sort(points.begin(), points.end(),
        [](const ScalingPoint& a, const ScalingPoint& b) { return a.processors < b.processors; });
    // A file may say anything. No machine is so much faster, or slower, than with few processors.
    constexpr double kMost = 1e6;
    const double first = points.front().speedUp / points.front().processors;
    for (ScalingPoint& point : points) {
        point.speedUp /= first;
        if (!(point.speedUp >= 1 / kMost && point.speedUp <= kMost))
            return {};
    }
    return points;
}

} // namespace

std::vector<TestScaling> ScalingOf(
    const std::vector<MeasuredMachine>& machines, const TestFilter& isWanted)
{
    const std::vector<Probe> bestProbes = BestProbes(machines);
    std::vector<TestScaling> tests;
    for (const TestType& test : kTestTypes) {
        if (!isWanted(test))
            continue;
        TestScaling scaling { &test, {} };
        for (size_t i = 0; i < machines.size(); i++) {
            auto points = PointsOf(machines[i].record, test, bestProbes[i]);
            if (!points.empty())
                scaling.curves.push_back({ i, std::move(points) });
        }
        if (!scaling.curves.empty())
            tests.push_back(std::move(scaling));
    }
    return tests;
}
