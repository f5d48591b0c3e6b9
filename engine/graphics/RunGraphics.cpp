// The graphics group of a run.
#include "engine/Benchmark.h"
#include "engine/graphics/GraphicsWin.h"
#include "toolkit/OwnedWindow.h"

#include <Messenger.h>
#include <Screen.h>

#include <cstdio>

namespace {

using GraphicsTest = void (GraphicsWin::*)(Results&);

// In the order of a run.
constexpr GraphicsTest kTests[] = {
    &GraphicsWin::TestLinesFlushed,
    &GraphicsWin::TestLinesUnflushed,
    &GraphicsWin::TestStringsFlushed,
    &GraphicsWin::TestStringsUnflushed,
    &GraphicsWin::TestEllipsesFlushed,
    &GraphicsWin::TestEllipsesUnflushed,
    &GraphicsWin::TestEllipsesFilledUnflushed,
    &GraphicsWin::TestRectanglesFlushed,
    &GraphicsWin::TestRectanglesUnflushed,
    &GraphicsWin::TestRectanglesFilledUnflushed,
    &GraphicsWin::TestPolygonsFlushed,
    &GraphicsWin::TestPolygonsUnflushed,
    &GraphicsWin::TestPolygonsFilledUnflushed,
};

// The window, on the screen for as long as this lives: it goes with the thread if that is killed.
// Somebody else may close it first, as an application that quits does with all its windows.
class ShownWindow {
public:
    ShownWindow() : window(new GraphicsWin), target(window)
    {
        window->SetPosition(kBesideMain);
        window->Show();
    }
    ~ShownWindow()
    {
        if (!target.LockTarget())
            return;
        window->Hide();
        window->Quit(); // which unlocks: so this is no block
    }
    ShownWindow(const ShownWindow&) = delete;
    ShownWindow& operator=(const ShownWindow&) = delete;

    // Calls action with the window, locked so that it stays there; false if it has gone.
    template <typename Action>
    bool Do(Action action)
    {
        const LibTargetLock lock(target);
        if (lock.IsLocked())
            action(*window);
        return lock.IsLocked();
    }

private:
    GraphicsWin* const window; // valid while target can be locked
    const BMessenger target;
};

} // namespace

// What cannot go on is left out of the later passes too: their times would take the slots of this
// one.
void Benchmark::RunGraphics()
{
    if (!BScreen(B_MAIN_SCREEN_ID).IsValid()) {
        fprintf(stderr, "No display: the tests of <Graphics> are left out\n");
        graphics = false;
        return;
    }
    ShownWindow window;
    bool isShown = false;
    window.Do([&isShown](GraphicsWin& shown) {
        isShown = !shown.IsHidden();
        shown.ClearView();
        if (isShown)
            shown.WarmUp();
    });
    if (!isShown) { // no thread could be made for it
        fprintf(stderr, "The tests of <Graphics> are left out\n");
        graphics = false;
        return;
    }
    for (const GraphicsTest test : kTests) {
        if (!window.Do([&](GraphicsWin& shown) { (shown.*test)(results); })) {
            fprintf(stderr, "The window of <Graphics> has gone: its other tests are left out\n");
            graphics = false;
            return;
        }
    }
}
