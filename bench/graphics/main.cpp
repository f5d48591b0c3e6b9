// graphics [ROUNDS [TEST]]: do the graphics tests measure the display, or the program around them
// too? Each test's rate beside that of a bare loop that sends the same shapes to the X server:
// the two in turn, in one process, on one display; the median of the pairs' ratios counts. "work"
// compares in the same way the processor time that client and server needed, which other programs'
// load disturbs less. Then how many shapes of the same size x11perf would draw, between the sizes
// that it has; it sends many of one colour in one request. "pixels": how many pixels a second the
// test draws beside x11perf's test of the nearest size. "batch": the same for the test's own shapes
// when they are sent in x11perf's manner, which no program that draws them one by one can pass:
// what the server takes for shapes that lie all over the window. Status 1 if a rate reaches less
// than 90 % of its loop's.
#include "BareWindow.h"
#include "engine/graphics/GraphicsWin.h"
#include "results/Results.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <map>
#include <string>
#include <sys/socket.h>
#include <vector>

namespace {

using Shape = BareWindow::Shape;

// x11perf's test and the pixels of one of its shapes.
struct PublicTest {
    const char* name;
    double pixels;
};

// A row's shape consists of so many pieces (lines of a triangle, letters) of so many pixels in the
// mean, which lie between those of two public tests.
struct Row {
    const char* metric;
    void (GraphicsWin::*run)(Results& results);
    Shape shape;
    bool flushed;
    long shapes;
    int pieces;
    double pixels;
    PublicTest smaller;
    PublicTest larger;
};

// Of random shapes in the square: a line takes 7/15 of the side, an outline twice the mean distance
// or four times a third of the side, an area a ninth of the square's, a triangle 11/144.
constexpr double kSide = 500;
constexpr double kLine = kSide * 7 / 15 + 1;
constexpr double kEllipse = kSide * 1.043;
constexpr double kEllipseArea = kSide * kSide / 9 * 0.785;
constexpr double kOutline = kSide * 4 / 3;
constexpr double kArea = kSide * kSide / 9;
constexpr double kTriangleArea = kSide * kSide * 11 / 144;

constexpr PublicTest kSegments[] = { { "seg100", 100 }, { "seg500", 500 } };
constexpr PublicTest kText[] = { { "aa10text", 1 }, { "aa10text", 1 } };
constexpr PublicTest kCircles[] = { { "circle100", 283 }, { "circle500", 1414 } };
constexpr PublicTest kDiscs[] = { { "fcircle100", 7854 }, { "fcircle500", 196350 } };
constexpr PublicTest kFrames[] = { { "orect100", 400 }, { "orect500", 2000 } };
constexpr PublicTest kAreas[] = { { "rect100", 10000 }, { "rect500", 250000 } };
constexpr PublicTest kLines[] = { { "line100", 100 }, { "line500", 500 } };
constexpr PublicTest kTriangles[] = { { "triangle100", 4330 }, { "trap300", 90000 } };

using Win = GraphicsWin;
const Row kRows[] = {
    { "Graphics Lines Flushed", &Win::TestLinesFlushed, Shape::kLine, true, 10000, 1, kLine,
        kSegments[0], kSegments[1] },
    { "Graphics Lines Unflushed", &Win::TestLinesUnflushed, Shape::kLine, false, 20000, 1, kLine,
        kSegments[0], kSegments[1] },
    { "Graphics Strings Flushed", &Win::TestStringsFlushed, Shape::kString, true, 10000, 6, 1,
        kText[0], kText[1] },
    { "Graphics Strings Unflushed", &Win::TestStringsUnflushed, Shape::kString, false, 20000, 6, 1,
        kText[0], kText[1] },
    { "Graphics Ellipses Flushed", &Win::TestEllipsesFlushed, Shape::kEllipse, true, 10000, 1,
        kEllipse, kCircles[0], kCircles[1] },
    { "Graphics Ellipses Unflushed", &Win::TestEllipsesUnflushed, Shape::kEllipse, false, 10000, 1,
        kEllipse, kCircles[0], kCircles[1] },
    { "Graphics Ellipses Unflushed Filled", &Win::TestEllipsesFilledUnflushed,
        Shape::kFilledEllipse, false, 10000, 1, kEllipseArea, kDiscs[0], kDiscs[1] },
    { "Graphics Rectangles Flushed", &Win::TestRectanglesFlushed, Shape::kRectangle, true, 10000, 1,
        kOutline, kFrames[0], kFrames[1] },
    { "Graphics Rectangles Unflushed", &Win::TestRectanglesUnflushed, Shape::kRectangle, false,
        50000, 1, kOutline, kFrames[0], kFrames[1] },
    { "Graphics Rectangles Unflushed Filled", &Win::TestRectanglesFilledUnflushed,
        Shape::kFilledRectangle, false, 10000, 1, kArea, kAreas[0], kAreas[1] },
    { "Graphics Polygons Flushed", &Win::TestPolygonsFlushed, Shape::kTriangle, true, 10000, 3,
        kLine, kLines[0], kLines[1] },
    { "Graphics Polygons Unflushed", &Win::TestPolygonsUnflushed, Shape::kTriangle, false, 10000, 3,
        kLine, kLines[0], kLines[1] },
    { "Graphics Polygons Unflushed Filled", &Win::TestPolygonsFilledUnflushed,
        Shape::kFilledTriangle, false, 10000, 1, kTriangleArea, kTriangles[0], kTriangles[1] },
};

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double MedianRatio(const std::vector<double>& values, const std::vector<double>& others)
{
    std::vector<double> ratios;
    for (size_t i = 0; i < values.size(); i++)
        ratios.push_back(values[i] / others[i]);
    return Median(ratios);
}

// How long this program and the X server have worked, whatever else the machine does meanwhile.
class ServerTime {
public:
    // Of the server at the other end, if it runs on this machine.
    explicit ServerTime(xcb_connection_t* connection)
    {
        ucred peer {};
        socklen_t size = sizeof peer;
        const int socket = xcb_get_file_descriptor(connection);
        if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.pid > 0)
            path = "/proc/" + std::to_string(peer.pid) + "/schedstat";
    }

    // Seconds of both so far; of this program only where the server's are not to be had.
    double Seconds() const
    {
        timespec own {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
        double nanos = 0;
        std::ifstream(path) >> nanos;
        return static_cast<double>(own.tv_sec) + (static_cast<double>(own.tv_nsec) + nanos) * 1e-9;
    }

private:
    std::string path; // where the kernel counts the server's nanoseconds; empty if elsewhere
};

// Operations per second of a test of x11perf, the public measurement of X servers, as in "seg500",
// run for a second on the display; 0, with a line on standard error, where the test is missing.
double X11PerfRate(const char* test)
{
    const std::string command = "x11perf -repeat 1 -time 1 -" + std::string(test) + " 2>/dev/null";
    double rate = 0;
    // Its lines read "  80000 reps @   0.0123 msec ( 81300.0/sec): 500-pixel line segment".
    FILE* output = popen(command.c_str(), "r");
    char line[256];
    while (output && fgets(line, sizeof line, output)) {
        const char* bracket = std::char_traits<char>::find(line, sizeof line, '(');
        if (bracket)
            sscanf(bracket, "(%lf/sec)", &rate);
    }
    if (output)
        pclose(output);
    if (rate <= 0)
        fprintf(stderr, "No figures of <x11perf -%s>\n", test);
    return rate;
}

// One way to draw a row: its rates and the processor time of each round.
struct Series {
    std::vector<double> rates;
    std::vector<double> work;

    // draw returns the seconds of its shapes and leaves nothing undrawn.
    template <typename Draw>
    void Add(const ServerTime& time, long shapes, Draw draw)
    {
        const double before = time.Seconds();
        rates.push_back(static_cast<double>(shapes) / draw());
        work.push_back(time.Seconds() - before);
    }
};

class Comparison {
public:
    Comparison(GraphicsWin& shown, BareWindow& bareWindow)
        : window(shown), bare(bareWindow), time(bareWindow.Connection())
    {
        if (!hasX11Perf)
            fprintf(stderr, "x11perf is not installed: its columns stay empty\n");
    }

    // A few samples of the program and the loop, and one of x11perf, if not taken in this round.
    void Measure(const Row& row, size_t round)
    {
        constexpr int kSamples = 5;
        for (int sample = 0; sample < kSamples; sample++) {
            const auto seed = static_cast<unsigned>(round * kSamples + sample);
            srand(seed);
            ours[row.metric].Add(time, row.shapes, [&] { return SecondsOf(row); });
            srand(seed);
            loop[row.metric].Add(time, row.shapes, [&] { return BareSecondsOf(row); });
        }
        srand(static_cast<unsigned>(round));
        if (const double seconds = bare.DrawBatch(row.shape, row.shapes); seconds > 0)
            batch[row.metric].push_back(static_cast<double>(row.shapes) / seconds);
        if (!hasX11Perf)
            return;
        for (const PublicTest& test : { row.smaller, row.larger })
            if (perf[test.name].size() <= round)
                perf[test.name].push_back(X11PerfRate(test.name));
    }

    // Prints the medians; false if the program is too slow.
    bool Report(const Row& row)
    {
        const double rate = Median(ours[row.metric].rates);
        const double bareRate = Median(loop[row.metric].rates);
        const double ratio = MedianRatio(ours[row.metric].rates, loop[row.metric].rates);
        const double work = MedianRatio(loop[row.metric].work, ours[row.metric].work);
        printf("%-37s%10.0f%10.0f%7.2f%7.2f", row.metric, rate, bareRate, ratio, work);
        if (hasX11Perf) {
            const double perfRate = PerfRate(row);
            const double pixels = row.pieces * row.pixels / PerfPixels(row);
            printf("%10.0f%7.2f%8.2f", perfRate, rate / perfRate, rate * pixels);
            if (batch.contains(row.metric))
                printf("%7.2f", Median(batch[row.metric]) * pixels);
        }
        printf("\n");
        return ratio >= 0.9;
    }

private:
    double SecondsOf(const Row& row)
    {
        results.Clear();
        (window.*row.run)(results);
        if (window.Lock()) {
            window.Sync();
            window.Unlock();
        }
        return results.NewTest(row.metric, 0)->times[0];
    }

    double BareSecondsOf(const Row& row)
    {
        window.SetTitle("Bare loop"); // as the test does, which is work too
        const double seconds = bare.Draw(row.shape, row.flushed, row.shapes);
        bare.Sync();
        return seconds;
    }

    // Pixels a second of the public test whose shapes are the nearest in size.
    double PerfPixels(const Row& row)
    {
        const bool isSmall = row.pixels * row.pixels < row.smaller.pixels * row.larger.pixels;
        const PublicTest& nearest = isSmall ? row.smaller : row.larger;
        return Median(perf[nearest.name]) * nearest.pixels;
    }

    // Of the row's shapes: the time of one lies on the line through the two sizes.
    double PerfRate(const Row& row)
    {
        const double small = 1 / Median(perf[row.smaller.name]);
        const double large = 1 / Median(perf[row.larger.name]);
        const double range = std::max(row.larger.pixels - row.smaller.pixels, 1.0);
        const double share = (row.pixels - row.smaller.pixels) / range;
        return 1 / (row.pieces * (small + share * (large - small)));
    }

    GraphicsWin& window;
    BareWindow& bare;
    const ServerTime time;
    const bool hasX11Perf = system("command -v x11perf >/dev/null") == 0;
    Results results { true };
    std::map<std::string, Series> ours;
    std::map<std::string, Series> loop;
    std::map<std::string, std::vector<double>> perf;
    std::map<std::string, std::vector<double>> batch;
};

} // namespace

int main(int argc, char** argv)
{
    const size_t rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    // Side by side: neither window covers the other.
    constexpr int16_t kTop = 30;
    constexpr int16_t kBareLeft = 522;
    BareWindow bare(kBareLeft, kTop);
    if (!bare.IsThere() || bare.Width() < kBareLeft + 501) {
        fprintf(stderr, "graphics needs a display 1024 pixels wide\n");
        return 1;
    }
    auto* window = new GraphicsWin;
    window->MoveTo(5, kTop);
    window->Show();
    window->ClearView();

    Comparison comparison(*window, bare);
    const auto isWanted = [&](const Row& row) { return argc < 3 || !strcmp(argv[2], row.metric); };
    for (size_t round = 0; round < rounds; round++)
        for (const Row& row : kRows)
            if (isWanted(row))
                comparison.Measure(row, round);

    printf("%-37s%10s%10s%7s%7s%10s%7s%8s%7s\n", "shapes per second", "test", "bare loop", "ratio",
        "work", "x11perf", "ratio", "pixels", "batch");
    bool keptUp = true;
    for (const Row& row : kRows)
        if (isWanted(row))
            keptUp &= comparison.Report(row);
    if (window->Lock())
        window->Quit();
    return keptUp ? 0 : 1;
}
