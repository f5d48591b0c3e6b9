#include "engine/graphics/GraphicsWin.h"

#include "engine/Span.h"
#include "results/Results.h"
#include "results/TestCatalogue.h"

#include <Autolock.h>
#include <View.h>

#include <cstdlib>

namespace {

constexpr float kSize = 500;
constexpr uint32 kFixed =
    B_NOT_MOVABLE | B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE;
constexpr double kRandRange = 2147483648.0; // one more than the largest rand()

// A component is 0 to 254: double, as the largest float below the range is the range itself.
uint8 Component()
{
    return static_cast<uint8>(rand() * (1 / kRandRange) * 255);
}

rgb_color Color()
{
    return { Component(), Component(), Component(), 255 }; // in this order
}

// While it lives rand() gives other numbers than those that it would give next.
class OtherRandomNumbers {
public:
    OtherRandomNumbers() : before(initstate(1, state, sizeof state)) { }
    ~OtherRandomNumbers() { setstate(before); }
    OtherRandomNumbers(const OtherRandomNumbers&) = delete;
    OtherRandomNumbers& operator=(const OtherRandomNumbers&) = delete;

private:
    char state[128];
    char* const before;
};

} // namespace

struct GraphicsWin::Test {
    const char* title;
    const TestType& type;
    long shapes;
    int randsPerShape; // for its coordinates
};

GraphicsWin::GraphicsWin()
    : LibWindow(BRect(10, 10, 10 + kSize, 10 + kSize), "GraphicsWin", B_TITLED_WINDOW_LOOK,
        B_NORMAL_WINDOW_FEEL, kFixed, B_CURRENT_WORKSPACE)
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    SetTitle("Test Graphics");
    bounds = Frame().OffsetToCopy(0, 0);
    view = new BView(bounds, "graphicsview", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    AddChild(view);
    scale = static_cast<float>(kSize / kRandRange);
}

GraphicsWin::~GraphicsWin() = default;

void GraphicsWin::ClearView()
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    view->SetHighColor(white_color);
    view->FillRect(bounds, B_SOLID_HIGH);
    view->SetHighColor(black_color);
    view->Flush();
}

// From 0 to just below kSize. Only as many bits as a float holds, or the largest numbers would be
// rounded up to kSize.
float GraphicsWin::Coordinate() const
{
    constexpr int kFloatBits = ~0x7f;
    return static_cast<float>(rand() & kFloatBits) * scale;
}

// Braces: their contents are evaluated from left to right.
BPoint GraphicsWin::Point() const
{
    return BPoint { Coordinate(), Coordinate() };
}

// Its corners are not put in order: every one in four is the usual way round.
BRect GraphicsWin::Rect() const
{
    return BRect { Coordinate(), Coordinate(), Coordinate(), Coordinate() };
}

bool GraphicsWin::IsBlank()
{
    if (!view->ShowsOnly(white_color).value_or(false))
        return false;
    // Or is the white another window's, in front of this one?
    view->SetHighColor(black_color);
    view->FillRect(bounds, B_SOLID_HIGH);
    return view->ShowsOnly(black_color).value_or(false);
}

template <GraphicsWin::Sending sending, typename Draw>
void GraphicsWin::DrawShapes(long shapes, Draw draw)
{
    for (long shape = 0; shape < shapes; shape++) {
        view->SetHighColor(Color());
        draw();
        if constexpr (sending == Sending::kFlushed)
            view->Flush();
    }
}

void GraphicsWin::WarmUp()
{
    constexpr long kOfEachKind = 500;
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    {
        const OtherRandomNumbers others;
        DrawShapes<Sending::kFlushed>(kOfEachKind, [this] {
            view->StrokeLine(Point(), Point(), B_SOLID_HIGH);
            view->DrawString("Tarvex", Point());
            view->StrokeEllipse(Rect(), B_SOLID_HIGH);
            view->FillEllipse(Rect(), B_SOLID_HIGH);
            view->StrokeRect(Rect(), B_SOLID_HIGH);
            view->FillRect(Rect(), B_SOLID_HIGH);
            view->StrokeTriangle(Point(), Point(), Point(), B_SOLID_HIGH);
            view->FillTriangle(Point(), Point(), Point(), B_SOLID_HIGH);
        });
    }
    ClearView();
    Sync();
}

template <GraphicsWin::Sending sending, typename Draw>
void GraphicsWin::Measure(const Test& test, Results& results, Draw draw)
{
    SetTitle(test.title);
    {
        const BAutolock lock(this);
        if (!lock.IsLocked())
            return;
        // Takes off the coordinates' calls of rand(), not the colours': published rates count
        // these.
        MeasureSpan(
            results, test.type, test.shapes, test.randsPerShape,
            [&] { DrawShapes<sending>(test.shapes, draw); },
            [&](Metric&) {
                const bool isLookedAt = results.watch && results.watch->WantsPixels();
                return isLookedAt && IsBlank() ? std::string("nothing was drawn") : "";
            });
    }
    ClearView();
}

void GraphicsWin::TestLinesFlushed(Results& results)
{
    Measure<Sending::kFlushed>(
        { "Flushed Lines", TestNamed("Graphics Lines Flushed"), 10000, 4 }, results, [this] {
            const BPoint from = Point();
            view->StrokeLine(from, Point(), B_SOLID_HIGH);
        });
}

void GraphicsWin::TestLinesUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>(
        { "Unflushed Lines", TestNamed("Graphics Lines Unflushed"), 20000, 4 }, results, [this] {
            const BPoint from = Point();
            view->StrokeLine(from, Point(), B_SOLID_HIGH);
        });
}

void GraphicsWin::TestStringsFlushed(Results& results)
{
    // Thousands of characters, nine of them a string as in all published figures.
    Measure<Sending::kFlushed>(
        { "Flushed Strings", TestNamed("Graphics Strings Flushed"), 10000, 2 }, results,
        [this] { view->DrawString("Tarvex", Point()); });
}

void GraphicsWin::TestStringsUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>(
        { "Unflushed Strings", TestNamed("Graphics Strings Unflushed"), 20000, 2 }, results,
        [this] { view->DrawString("Tarvex", Point()); });
}

void GraphicsWin::TestEllipsesFlushed(Results& results)
{
    Measure<Sending::kFlushed>(
        { "Flushed Ellipses", TestNamed("Graphics Ellipses Flushed"), 10000, 4 }, results,
        [this] { view->StrokeEllipse(Rect(), B_SOLID_HIGH); });
}

void GraphicsWin::TestEllipsesUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>(
        { "Unflushed Ellipses", TestNamed("Graphics Ellipses Unflushed"), 10000, 4 }, results,
        [this] { view->StrokeEllipse(Rect(), B_SOLID_HIGH); });
}

void GraphicsWin::TestEllipsesFilledUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>(
        { "Unflushed Filled Ellipses", TestNamed("Graphics Ellipses Unflushed Filled"), 10000, 4 },
        results, [this] { view->FillEllipse(Rect(), B_SOLID_HIGH); });
}

void GraphicsWin::TestRectanglesFlushed(Results& results)
{
    Measure<Sending::kFlushed>(
        { "Flushed Rectangles", TestNamed("Graphics Rectangles Flushed"), 10000, 4 }, results,
        [this] { view->StrokeRect(Rect(), B_SOLID_HIGH); });
}

void GraphicsWin::TestRectanglesUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>(
        { "Unflushed Rectangles", TestNamed("Graphics Rectangles Unflushed"), 50000, 4 }, results,
        [this] { view->StrokeRect(Rect(), B_SOLID_HIGH); });
}

void GraphicsWin::TestRectanglesFilledUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>({ "Unflushed Filled Rectangles",
                                     TestNamed("Graphics Rectangles Unflushed Filled"), 10000, 4 },
        results, [this] { view->FillRect(Rect(), B_SOLID_HIGH); });
}

void GraphicsWin::TestPolygonsFlushed(Results& results)
{
    Measure<Sending::kFlushed>(
        { "Flushed Polygons", TestNamed("Graphics Polygons Flushed"), 10000, 6 }, results, [this] {
            const BPoint first = Point();
            const BPoint second = Point();
            view->StrokeTriangle(first, second, Point(), B_SOLID_HIGH);
        });
}

void GraphicsWin::TestPolygonsUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>(
        { "Unflushed Polygons", TestNamed("Graphics Polygons Unflushed"), 10000, 6 }, results,
        [this] {
            const BPoint first = Point();
            const BPoint second = Point();
            view->StrokeTriangle(first, second, Point(), B_SOLID_HIGH);
        });
}

void GraphicsWin::TestPolygonsFilledUnflushed(Results& results)
{
    Measure<Sending::kUnflushed>(
        { "Unflushed Filled Polygons", TestNamed("Graphics Polygons Unflushed Filled"), 10000, 6 },
        results, [this] {
            const BPoint first = Point();
            const BPoint second = Point();
            view->FillTriangle(first, second, Point(), B_SOLID_HIGH);
        });
}
