#include "results/ScalingPicture.h"

#include "foundation/LibString.h"
#include "foundation/PlainText.h"

#include <Font.h>
#include <Picture.h>
#include <View.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace {

constexpr float kMargin = 16;
constexpr float kTitleSize = 14;
constexpr float kTitleBaseline = 26;
constexpr float kLegendTop = 40;
constexpr float kLegendRow = 17;
constexpr float kFontSize = 10;
constexpr float kScaleWidth = 44; // of the labels left of a plot
constexpr float kCaption = 20; // above a plot
constexpr float kFoot = 40; // below it: its labels, what they count, and a gap
constexpr float kMarker = 3; // from its middle to its edge
constexpr float kPointer = 26; // of a legend's entry: its line

// Whoever looks at an SVG may have a font that is a little wider.
constexpr float kSpare = 1.05f;

// Eight that people with every kind of colour vision tell apart on white. Source: Okabe and Ito,
// "Color universal design" (2008), with grey in place of the yellow.
constexpr std::array<rgb_color, 8> kColors { { { 0, 114, 178, 255 }, { 213, 94, 0, 255 },
    { 0, 158, 115, 255 }, { 204, 121, 167, 255 }, { 230, 159, 0, 255 }, { 86, 180, 233, 255 },
    { 0, 0, 0, 255 }, { 120, 120, 120, 255 } } };
enum class Marker { kSquare, kDisc, kTriangle };
constexpr size_t kMarkers = 3;
constexpr size_t kMostMachines = kColors.size() * kMarkers;

constexpr rgb_color kBlack { 0, 0, 0, 255 };
constexpr rgb_color kWhite { 255, 255, 255, 255 };
constexpr rgb_color kGrid { 224, 224, 224, 255 };
constexpr rgb_color kIdeal { 160, 160, 160, 255 };

struct Look {
    rgb_color color {};
    Marker marker {};
};

// How many and how large the plots are.
struct Sizes {
    float cellWidth; // of a plot with its labels
    float plotHeight;
    int columns; // of tests
    float title; // above the plots of a test
    [[nodiscard]] float TestHeight() const { return title + kCaption + plotHeight + kFoot; }
    [[nodiscard]] float TestWidth() const { return 2 * cellWidth; }
    [[nodiscard]] float Width() const
    {
        return 2 * kMargin + static_cast<float>(columns) * TestWidth();
    }
};
constexpr Sizes kLarge { 400, 260, 1, 0 };
constexpr Sizes kSmall { 250, 130, 2, 22 };

// Values along one side of a plot. Where each step doubles them the ideal line is straight too.
struct Scale {
    double lowest = 0;
    double highest = 1;
    bool isDoubling = false; // above 0 then

    // 0 for the lowest to 1 for the highest.
    [[nodiscard]] float ShareOf(double value) const
    {
        const auto place = [&](double at) { return isDoubling ? std::log2(at) : at; };
        return static_cast<float>(
            (place(value) - place(lowest)) / (place(highest) - place(lowest)));
    }
};

struct Plot {
    BRect frame;
    Scale x; // processors
    Scale y;

    [[nodiscard]] float XFor(double processors) const
    {
        return frame.left + x.ShareOf(processors) * frame.Width();
    }
    [[nodiscard]] float YFor(double value) const
    {
        return frame.bottom - y.ShareOf(value) * frame.Height();
    }
};

// 1, 2 or 5 times a power of ten, so that four to ten of them make up the range.
double StepFor(double range)
{
    const double power = std::pow(10, std::floor(std::log10(range / 4)));
    for (const double factor : { 5, 2 }) {
        if (factor * power <= range / 4)
            return factor * power;
    }
    return power;
}

// The values that a scale's lines stand for.
std::vector<double> LinesOf(const Scale& scale)
{
    std::vector<double> lines;
    if (scale.isDoubling) {
        for (int64 value = 1; static_cast<double>(value) <= scale.highest; value *= 2)
            lines.push_back(static_cast<double>(value));
    } else {
        const double step = StepFor(scale.highest);
        for (int i = 0; i * step <= scale.highest; i++)
            lines.push_back(i * step);
    }
    return lines;
}

class Drawing {
public:
    Drawing(const std::vector<MeasuredMachine>& machines, const std::vector<TestScaling>& tests)
        : fMachines(machines), fTests(tests), fSizes(tests.size() > 1 ? kSmall : kLarge)
    {
        fPlain.SetSize(kFontSize);
        std::set<size_t> shown;
        for (const TestScaling& test : tests) {
            for (const ScalingCurve& curve : test.curves) {
                shown.insert(curve.machine);
                fIsAnyDoubtful = fIsAnyDoubtful
                    || std::any_of(curve.points.begin(), curve.points.end(),
                        [](const ScalingPoint& point) { return point.isDoubtful; });
            }
        }
        fShown.assign(shown.begin(), shown.end());
        MakeLegend();
    }

    std::string Write(const char* path)
    {
        const auto rows = (static_cast<int>(fTests.size()) - 1) / fSizes.columns + 1;
        const float bottom = fPlotsTop + static_cast<float>(rows) * fSizes.TestHeight();
        BView view(
            BRect(0, 0, fSizes.Width() - 1, bottom - 1), "picture", B_FOLLOW_NONE, B_WILL_DRAW);
        fView = &view;
        const std::string title = fTests.size() > 1
            ? "Scaling of " + std::to_string(fTests.size()) + " tests"
            : fTests.front().test->name;
        view.BeginPicture(&fPicture);
        DrawTitle(title.c_str(), kTitleSize, BPoint(kMargin, kTitleBaseline));
        DrawLegend();
        BPoint place(kMargin, fPlotsTop);
        for (const TestScaling& test : fTests) {
            DrawTest(test, place);
            place.x += fSizes.TestWidth();
            if (place.x + fSizes.TestWidth() > fSizes.Width())
                place = BPoint(kMargin, place.y + fSizes.TestHeight());
        }
        view.EndPicture();
        return WritePicture(path, fPicture, view.Bounds(), title.c_str());
    }

private:
    struct Entry {
        std::string text;
        BPoint leftTop {};
        bool hasLine = false; // before its text
        std::optional<size_t> place {}; // of the machine among those that are shown
    };

    // The machines in columns, and below them what else there is to say.
    void MakeLegend()
    {
        const size_t drawn = std::min(fShown.size(), kMostMachines);
        const float whole = fSizes.Width() - 2 * kMargin;
        float column = 0;
        for (size_t i = 0; i < drawn; i++) {
            LibString name(fMachines[fShown[i]].name.c_str());
            BRect extent;
            name.Truncate(fPlain, static_cast<int>((whole - kPointer) / kSpare), extent);
            fLegend.push_back({ name.operator const char*(), {}, true, i });
            column = std::max(column, WidthOf(fLegend.back()));
        }
        const auto columns = static_cast<size_t>(std::max(1.0f, whole / (column + kMargin)));
        BPoint place(kMargin, kLegendTop);
        for (size_t i = 0; i < drawn; i++) {
            fLegend[i].leftTop =
                place + BPoint(static_cast<float>(i % columns) * (column + kMargin), 0);
            if (i % columns == columns - 1 || i + 1 == drawn)
                place.y += kLegendRow;
        }
        fLegend.push_back({ "ideal", {}, true });
        if (fIsAnyDoubtful)
            fLegend.push_back({ "hollow: shared, two speeds or unsteady" });
        if (const size_t more = fShown.size() - drawn; more > 0)
            fLegend.push_back({ "and " + std::to_string(more)
                + (more > 1 ? " more machines" : " more machine") });
        for (size_t i = drawn; i < fLegend.size(); i++) {
            fLegend[i].leftTop = place;
            place.x += WidthOf(fLegend[i]) + kMargin;
        }
        fPlotsTop = place.y + kLegendRow + kMargin / 2;
    }

    float WidthOf(const Entry& entry) const
    {
        return (entry.hasLine ? kPointer : 0) + kSpare * fPlain.StringWidth(entry.text.c_str());
    }

    void DrawTitle(const char* title, float size, BPoint where)
    {
        BFont bold(be_bold_font);
        bold.SetSize(size);
        fView->SetFont(&bold);
        fView->SetHighColor(kBlack);
        fView->DrawString(title, where);
        fView->SetFont(&fPlain);
    }

    static Look LookOf(size_t place)
    {
        return { kColors[place % kColors.size()],
            static_cast<Marker>(place / kColors.size() % kMarkers) };
    }

    void DrawLegend()
    {
        for (const Entry& entry : fLegend) {
            BPoint text = entry.leftTop + BPoint(0, 11);
            const BPoint middle = entry.leftTop + BPoint(kPointer / 2 - 3, 7);
            if (entry.hasLine) {
                text.x += kPointer;
                const Look look = entry.place ? LookOf(*entry.place) : Look { kIdeal, {} };
                fView->SetHighColor(look.color);
                DrawLine(middle - BPoint(9, 0), middle + BPoint(9, 0));
                if (entry.place)
                    DrawMarker(middle, look, false);
            }
            fView->SetHighColor(kBlack);
            fView->DrawString(entry.text.c_str(), text);
        }
    }

    void DrawLine(BPoint from, BPoint to)
    {
        fView->SetPenSize(2);
        fView->StrokeLine(from, to);
        fView->SetPenSize(1);
    }

    void DrawMarker(BPoint middle, const Look& look, bool isHollow)
    {
        const BRect box(middle - BPoint(kMarker, kMarker), middle + BPoint(kMarker, kMarker));
        const BPoint top(middle.x, middle.y - kMarker - 1);
        const BPoint left(middle.x - kMarker - 1, middle.y + kMarker);
        const BPoint right(middle.x + kMarker + 1, middle.y + kMarker);
        fView->SetHighColor(isHollow ? kWhite : look.color);
        switch (look.marker) {
            case Marker::kSquare: fView->FillRect(box); break;
            case Marker::kDisc: fView->FillEllipse(box); break;
            case Marker::kTriangle: fView->FillTriangle(top, left, right); break;
        }
        fView->SetHighColor(look.color);
        switch (look.marker) {
            case Marker::kSquare: fView->StrokeRect(box); break;
            case Marker::kDisc: fView->StrokeEllipse(box); break;
            case Marker::kTriangle: fView->StrokeTriangle(top, left, right); break;
        }
    }

    void DrawTest(const TestScaling& test, BPoint leftTop)
    {
        if (fSizes.title > 0)
            DrawTitle(test.test->name, kFontSize + 1, leftTop + BPoint(0, 14));
        const float top = leftTop.y + fSizes.title + kCaption;
        Plot plot;
        plot.frame.Set(leftTop.x + kScaleWidth, top, leftTop.x + fSizes.cellWidth - kMargin,
            top + fSizes.plotHeight);
        std::set<int32> counts;
        double slowest = 1;
        double fastest = 1;
        double mostEfficient = 1;
        for (const ScalingCurve& curve : test.curves) {
            for (const ScalingPoint& point : curve.points) {
                counts.insert(point.processors);
                slowest = std::min(slowest, point.speedUp);
                fastest = std::max(fastest, point.speedUp);
                mostEfficient = std::max(mostEfficient, point.Efficiency());
            }
        }
        constexpr double kAbove = 1.05; // free above the highest
        constexpr double kMostLinear = 16; // times the fewest: few counts would crowd at the left
        const double fewest = *counts.begin();
        const double most = *counts.rbegin();
        const bool isDoubling = most > kMostLinear * fewest;
        plot.x = { fewest, most, isDoubling };
        plot.y = { isDoubling ? slowest : 0, kAbove * std::max(most, fastest), isDoubling };
        DrawAxes(plot, counts, "Speed-up");
        fView->SetHighColor(kIdeal);
        DrawLine(
            BPoint(plot.XFor(fewest), plot.YFor(fewest)), BPoint(plot.XFor(most), plot.YFor(most)));
        DrawCurves(plot, test, [](const ScalingPoint& point) { return point.speedUp; });

        plot.frame.OffsetBy(fSizes.cellWidth, 0);
        plot.y = { 0, kAbove * 100 * mostEfficient };
        DrawAxes(plot, counts, "Efficiency (percent)");
        fView->SetHighColor(kIdeal);
        DrawLine(BPoint(plot.frame.left, plot.YFor(100)), BPoint(plot.frame.right, plot.YFor(100)));
        DrawCurves(plot, test, [](const ScalingPoint& point) { return 100 * point.Efficiency(); });
    }

    void DrawAxes(const Plot& plot, const std::set<int32>& counts, const char* caption)
    {
        const BRect& frame = plot.frame;
        fView->SetHighColor(kBlack);
        fView->DrawString(caption, BPoint(frame.left, frame.top - 7));
        for (const double value : LinesOf(plot.y)) {
            const float y = std::round(plot.YFor(value));
            fView->SetHighColor(y == frame.bottom ? kIdeal : kGrid);
            fView->StrokeLine(BPoint(frame.left, y), BPoint(frame.right, y));
            const std::string label = LibShortestText(value);
            fView->SetHighColor(kBlack);
            fView->DrawString(
                label.c_str(), BPoint(frame.left - 8 - fView->StringWidth(label.c_str()), y + 4));
        }
        DrawCounts(plot, counts);
        const char* const name = "Processors";
        fView->SetHighColor(kBlack);
        fView->DrawString(name,
            BPoint((frame.left + frame.right - fView->StringWidth(name)) / 2, frame.bottom + 28));
    }

    // Below each count its number, but for those that have no room left of a greater one.
    void DrawCounts(const Plot& plot, const std::set<int32>& counts)
    {
        float next = plot.frame.right + kMargin;
        for (auto count = counts.rbegin(); count != counts.rend(); ++count) {
            const float x = std::round(plot.XFor(*count));
            fView->SetHighColor(kGrid);
            fView->StrokeLine(BPoint(x, plot.frame.top), BPoint(x, plot.frame.bottom));
            const std::string label = std::to_string(*count);
            const float width = fView->StringWidth(label.c_str());
            if (x + width / 2 > next - 4)
                continue;
            next = x - width / 2;
            fView->SetHighColor(kBlack);
            fView->DrawString(label.c_str(), BPoint(next, plot.frame.bottom + 14));
        }
    }

    template <class ValueOf>
    void DrawCurves(const Plot& plot, const TestScaling& test, const ValueOf& valueOf)
    {
        for (const ScalingCurve& curve : test.curves) {
            const auto shown = std::lower_bound(fShown.begin(), fShown.end(), curve.machine);
            const auto place = static_cast<size_t>(shown - fShown.begin());
            if (place >= kMostMachines)
                continue;
            const Look look = LookOf(place);
            std::vector<BPoint> points;
            for (const ScalingPoint& point : curve.points)
                points.emplace_back(plot.XFor(point.processors), plot.YFor(valueOf(point)));
            fView->SetHighColor(look.color);
            for (size_t i = 1; i < points.size(); i++)
                DrawLine(points[i - 1], points[i]);
            for (size_t i = 0; i < points.size(); i++)
                DrawMarker(points[i], look, curve.points[i].isDoubtful);
        }
    }

    const std::vector<MeasuredMachine>& fMachines;
    const std::vector<TestScaling>& fTests;
    const Sizes fSizes;
    BPicture fPicture; // before anything is measured
    BFont fPlain { be_plain_font };
    std::vector<size_t> fShown; // the machines that have a curve
    std::vector<Entry> fLegend;
    bool fIsAnyDoubtful = false;
    float fPlotsTop = 0;
    BView* fView = nullptr;
};

} // namespace

std::string WriteScalingPicture(const char* path, const std::vector<MeasuredMachine>& machines,
    const std::vector<TestScaling>& tests)
{
    return tests.empty() ? "nothing was measured at two processor counts"
                         : Drawing(machines, tests).Write(path);
}
