// The window of the graphics tests.
#pragma once

#include "toolkit/LibWindow.h"

#include <GraphicsDefs.h>

class Results;

// Thirteen tests, each of so many shapes at random places in random colours, drawn into one view by
// the thread that calls the test, never the window's own: it holds the window's lock while it
// draws, so the window answers nothing meanwhile. Each sets the window's title, records the time
// of its shapes as the next slot of its metric and leaves the view white. Where somebody watches
// the spans, the view is read back first: a test after which it is blank was not done.
//
// "Flushed": every shape is sent on its own. "Unflushed": shapes leave as the buffer fills, and the
// rest only when the clock has stopped.
//
// In the order of a run: new, SetPosition(), Show(), ClearView(), WarmUp(), the tests, Hide(),
// Lock(), Quit().
class GraphicsWin : public LibWindow {
public:
    GraphicsWin();
    ~GraphicsWin() override;

    void TestLinesFlushed(Results& results);
    void TestLinesUnflushed(Results& results);
    void TestStringsFlushed(Results& results);
    void TestStringsUnflushed(Results& results);
    void TestEllipsesFlushed(Results& results);
    void TestEllipsesUnflushed(Results& results);
    void TestEllipsesFilledUnflushed(Results& results);
    void TestRectanglesFlushed(Results& results);
    void TestRectanglesUnflushed(Results& results);
    void TestRectanglesFilledUnflushed(Results& results);
    void TestPolygonsFlushed(Results& results); // triangles, these three
    void TestPolygonsUnflushed(Results& results);
    void TestPolygonsFilledUnflushed(Results& results);

    // Makes the view white and its high colour black, and sends that. The first call returns when
    // the window is on the screen.
    void ClearView();
    // Draws some of every kind of shape, clears the view and waits for the display: letters, which
    // go to it at their first use, and pages that were never touched would be in the tests' times.
    // The numbers that rand() gives next stay what they were.
    void WarmUp();

private:
    struct Test;
    enum class Sending { kFlushed, kUnflushed };

    template <Sending sending, typename Draw>
    void Measure(const Test& test, Results& results, Draw draw);
    template <Sending sending, typename Draw>
    void DrawShapes(long shapes, Draw draw);

    // Whether the view shows nothing on its white; false too where it is covered or on no screen,
    // so that nobody can tell. Waits for the display server, and may leave the view black.
    bool IsBlank();

    float Coordinate() const;
    BPoint Point() const;
    BRect Rect() const;

    BView* view = nullptr; // owned by the window as its child
    BRect bounds; // of view
    float scale = 0; // from rand() to a coordinate
};
