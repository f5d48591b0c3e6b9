// The graphics tests: what they ask of the view is noted on its way to the kits, which still draw.
#include "engine/Benchmark.h"
#include "engine/graphics/GraphicsWin.h"
#include "engine/Sitting.h"
#include "tests/engine/Recorder.h"
#include "tests/support/NoThreads.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"

#include <Autolock.h>
#include <View.h>

namespace {

// One call: l line, r R rectangle, e E ellipse, t T triangle, s string "Tarvex"; capitals filled.
struct Drawn {
    char kind;
    rgb_color color;
    std::vector<float> places; // as the arguments give them
    bool sent; // by a Flush() before the next one

    bool operator==(const Drawn& o) const // but for the last bits of coordinates
    {
        const auto near = [](float a, float b) { return std::abs(a - b) < 0.0001f; };
        return kind == o.kind && color == o.color && sent == o.sent
            && std::equal(places.begin(), places.end(), o.places.begin(), o.places.end(), near);
    }
};

std::vector<Drawn> gDrawn;
char gLostKind = 0; // is not drawn
int gSyncs = 0;
std::atomic<BWindow*> gWindow; // of the latest string that a test drew

void Note(char kind, BView* view, pattern p, std::vector<float> places)
{
    gDrawn.push_back({ p == B_SOLID_HIGH ? kind : '?', view->HighColor(), places, false });
}

} // namespace

// clang-format off
#define NOTED(symbol, parameters, arguments, note) \
    void __real_##symbol parameters; \
    void __wrap_##symbol parameters \
    { \
        note; \
        if (gDrawn.empty() || gDrawn.back().kind != gLostKind) \
            __real_##symbol arguments; \
    }
#define NOTED_RECT(kind, symbol) \
    NOTED(symbol, (BView* v, BRect r, pattern p), (v, r, p), \
        Note(kind, v, p, { r.left, r.top, r.right, r.bottom }))
#define NOTED_TRIANGLE(kind, symbol) \
    NOTED(symbol, (BView* v, BPoint a, BPoint b, BPoint c, pattern p), (v, a, b, c, p), \
        Note(kind, v, p, { a.x, a.y, b.x, b.y, c.x, c.y }))

extern "C" {
NOTED_RECT('r', _ZN5BView10StrokeRectE5BRect7pattern)
NOTED_RECT('R', _ZN5BView8FillRectE5BRect7pattern)
NOTED_RECT('e', _ZN5BView13StrokeEllipseE5BRect7pattern)
NOTED_RECT('E', _ZN5BView11FillEllipseE5BRect7pattern)
NOTED_TRIANGLE('t', _ZN5BView14StrokeTriangleE6BPointS0_S0_7pattern)
NOTED_TRIANGLE('T', _ZN5BView12FillTriangleE6BPointS0_S0_7pattern)
NOTED(_ZN5BView10StrokeLineE6BPointS0_7pattern, (BView* v, BPoint a, BPoint b, pattern p),
    (v, a, b, p), Note('l', v, p, { a.x, a.y, b.x, b.y }))
NOTED(_ZN5BView10DrawStringEPKc6BPointP16escapement_delta,
    (BView* v, const char* text, BPoint a, escapement_delta* delta), (v, text, a, delta),
    Note(strcmp(text, "Tarvex") == 0 && !delta ? 's' : '?', v, B_SOLID_HIGH, { a.x, a.y });
    if (strstr(v->Window()->Title(), "Strings")) gWindow = v->Window())
NOTED(_ZNK5BView5FlushEv, (const BView* v), (v), if (!gDrawn.empty()) gDrawn.back().sent = true)
NOTED(_ZNK5BView4SyncEv, (const BView* v), (v), gSyncs++)
}

// clang-format on

namespace {

struct Row {
    void (GraphicsWin::*run)(Results& results);
    std::string metric; // without "Graphics"
    int shapes;
    size_t rands; // for a shape's coordinates
    char kind;
};

using Win = GraphicsWin;
// In the order of a run.
const Row kRows[] = {
    { &Win::TestLinesFlushed, "Lines Flushed", 10000, 4, 'l' },
    { &Win::TestLinesUnflushed, "Lines Unflushed", 20000, 4, 'l' },
    { &Win::TestStringsFlushed, "Strings Flushed", 10000, 2, 's' },
    { &Win::TestStringsUnflushed, "Strings Unflushed", 20000, 2, 's' },
    { &Win::TestEllipsesFlushed, "Ellipses Flushed", 10000, 4, 'e' },
    { &Win::TestEllipsesUnflushed, "Ellipses Unflushed", 10000, 4, 'e' },
    { &Win::TestEllipsesFilledUnflushed, "Ellipses Unflushed Filled", 10000, 4, 'E' },
    { &Win::TestRectanglesFlushed, "Rectangles Flushed", 10000, 4, 'r' },
    { &Win::TestRectanglesUnflushed, "Rectangles Unflushed", 50000, 4, 'r' },
    { &Win::TestRectanglesFilledUnflushed, "Rectangles Unflushed Filled", 10000, 4, 'R' },
    { &Win::TestPolygonsFlushed, "Polygons Flushed", 10000, 6, 't' },
    { &Win::TestPolygonsUnflushed, "Polygons Unflushed", 10000, 6, 't' },
    { &Win::TestPolygonsFilledUnflushed, "Polygons Unflushed Filled", 10000, 6, 'T' },
};

// "Unflushed Filled Lines" for "Lines Unflushed Filled".
std::string TitleOf(const Row& row)
{
    const size_t space = row.metric.find(' ');
    return row.metric.substr(space + 1) + " " + row.metric.substr(0, space);
}

class GraphicsTest : public testing::Test {
protected:
    void SetUp() override
    {
        gDrawn.clear();
        gLostKind = 0;
        gWindow = nullptr;
    }
    void TearDown() override
    {
        if (window && window->Lock())
            window->Quit();
        EXPECT_FALSE(screen::Find("graphicsview").exists);
        EXPECT_EQ(gSyncs, 0);
        for (int32 cpu = 1; cpu < benchmark.results.nbrCpus; cpu++)
            _kset_cpu_state_(cpu, 1); // as an ended run leaves them
    }

    void ShowWindow()
    {
        window = new GraphicsWin;
        window->Show();
        window->ClearView();
    }
    // Starts a run and returns when it draws.
    void StartRun()
    {
        benchmark.graphics = true;
        ASSERT_EQ(benchmark.Go("benchmark", ended.NewMessenger(), 20, false), B_OK);
        ASSERT_SOON(gWindow != nullptr);
    }

    GraphicsWin* window = nullptr;
    Benchmark benchmark;
    const ScopedRecorder ended;
};

// What a test draws, worked out from the numbers that rand() gives next.
std::vector<Drawn> Expected(const Row& row)
{
    for (size_t i = 0; i < row.shapes * row.rands; i++)
        static_cast<void>(rand()); // the calibration's
    const bool isFlushed = row.metric.ends_with(" Flushed");
    std::vector<Drawn> expected;
    for (int shape = 0; shape < row.shapes; shape++) {
        uint8 color[3];
        for (uint8& component : color)
            component = static_cast<uint8>(rand() / 2147483648.0 * 255);
        std::vector<float> places(row.rands);
        for (float& place : places)
            place = static_cast<float>(rand() / 2147483648.0 * 500);
        expected.push_back({ row.kind, { color[0], color[1], color[2] }, places, isFlushed });
    }
    expected.push_back({ 'R', white_color, { 0, 0, 500, 500 }, true });
    return expected;
}

TEST_F(GraphicsTest, EachDrawsItsShapesTimesThemAndLeavesTheViewWhite)
{
    ShowWindow();
    GraphicsWin& shown = *window;
    EXPECT_EQ(window->Flags(), 0x4063u);
    EXPECT_SOON(screen::Find("graphicsview", "Test Graphics").exposed);
    for (int pass = 1; pass <= 2; pass++) {
        for (const Row& row : kRows) {
            SCOPED_TRACE(row.metric);
            srand(pass);
            gDrawn.clear();
            shown.WarmUp(); // which leaves the numbers and the view as they were
            std::string kinds; // far apart, so that each is there
            for (size_t i = 0; i < gDrawn.size(); i += 1 + gDrawn.size() / 9)
                kinds += gDrawn[i].kind;
            EXPECT_EQ(kinds, "lReTrstEl");
            gDrawn.clear();
            (shown.*row.run)(benchmark.results);
            srand(pass);
            const std::vector<Drawn> expected = Expected(row);
            const auto [drawn, wanted] =
                std::mismatch(gDrawn.begin(), gDrawn.end(), expected.begin(), expected.end());
            EXPECT_TRUE(drawn == gDrawn.end() && wanted == expected.end())
                << "call " << wanted - expected.begin() << " of " << expected.size();
            EXPECT_EQ(window->ChildAt(0)->HighColor(), black_color);
            EXPECT_TRUE(screen::Find("graphicsview", TitleOf(row)).exposed);

            const Metric* metric = benchmark.results.NewTest(
                ("Graphics " + row.metric).c_str(), 1); // the one made above
            EXPECT_EQ(MetricName(metric->index), "Graphics " + row.metric);
            EXPECT_STREQ(metric->units, MetricUnits(metric->index));
            EXPECT_EQ(metric->cycles, row.kind == 's' ? row.shapes * 9 / 1000 : row.shapes);
            EXPECT_EQ(metric->nbrTimes, pass);
        }
    }
}

TEST_F(GraphicsTest, AWatchedOneThatDrewNothingWasNotDone)
{
    ShowWindow();
    std::string undone;
    for (const char lost : { '\0', 'l' }) {
        gLostKind = lost;
        Sitting sitting { RunPlan() }; // watches its results
        window->TestLinesUnflushed(sitting.results);
        window->TestPolygonsUnflushed(sitting.results);
        for (const Series& series : sitting.record.series)
            undone += series.undone + "; ";
    }
    EXPECT_EQ(undone, "; ; nothing was drawn; ; ");
}

TEST_F(GraphicsTest, ARunGoesOnWithoutThemWhenTheirWindowGoes)
{
    benchmark.ackerman = true;
    testing::internal::CaptureStderr();
    StartRun();
    BWindow* shown = gWindow;
    // Asked again: while the window manager frames it, it may be told to lie at 0.
    const auto left = [shown] {
        const BAutolock lock(shown);
        return shown->Frame().left;
    };
    EXPECT_SOON(left() > 10) << "beside the main window";
    {
        const BAutolock lock(shown); // between two tests
        ASSERT_TRUE(lock.IsLocked());
        EXPECT_EQ(system("xdotool search --name lushed windowclose"), 0);
        EXPECT_SOON(system("xdotool search --name lushed >/dev/null") != 0);
        // That it has gone was said before this picture is sent, and is dealt with before the
        // calls.
        static_cast<void>(screen::PixelAt(BPoint(0, 0)));
        for (int call = 0; call < 2; call++)
            static_cast<void>(screen::Find("graphicsview"));
    }
    const int32 cpus = benchmark.results.nbrCpus;
    EXPECT_EQ(ended.WaitFor(cpus + 2).back(), "benchmark: 0");
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(
        errors.ends_with("The window of <Graphics> has gone: its other tests are left out\n"))
        << errors;
    const Metric* lines = benchmark.results.NewTest("Graphics Lines Flushed", 1);
    EXPECT_EQ(lines->nbrTimes, cpus);
    EXPECT_GT(lines->times[0], 0);
    EXPECT_TRUE(cpus == 1 || lines->times[cpus - 1] == 0);
    EXPECT_EQ(benchmark.results.NewTest("Ackerman", 1)->nbrTimes, cpus);
}

TEST_F(GraphicsTest, AreLeftOutWithoutAThreadForTheirWindow)
{
    ShowWindow(); // so that what all windows share has its threads
    benchmark.graphics = true;
    testing::internal::CaptureStderr();
    {
        const NoThreads noThreads;
        benchmark.RunGraphics();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Cannot start thread <Test Graphics>: its window is not shown\nThe tests of <Graphics> are "
        "left out\n");
    EXPECT_FALSE(benchmark.graphics);
}

TEST_F(GraphicsTest, TheirWindowGoesWithAKilledRun)
{
    StartRun();
    EXPECT_EQ(benchmark.Kill(), B_OK);
}

} // namespace
