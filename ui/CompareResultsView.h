// The comparison chart: a row for each machine with a bar for each processor count, above a grid.
#pragma once

#include <View.h>

#include "results/Comparison.h"

class CompareWin;

// Clicks at machines, or the arrow keys and Enter, select them and show their devices. Lies in a
// scroll view; what it draws may be higher than itself. All calls with the window locked.
class CompareResultsView : public BView {
public:
    CompareResultsView(BRect frame, CompareWin* window);

    ResultList machines;
    Results* selected = nullptr; // the machine that percents refer to

    // Measures the current tests anew; to be called after they or the machines have changed.
    void UpdateMaxScale();
    // Whether bars show percents of the selected machine's best rate.
    void CompareByRatio(const bool& ratio);
    // Redraws all of it, with the scroll bar for the height that it has then.
    void Redraw();
    // The height of all rows, at least the view's own.
    float ChartHeight();
    // Writes the table "Tarvex.compare" into the working directory and says so; a line on
    // standard error if it cannot be written.
    void Save();

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void FrameResized(float width, float height) override;

private:
    void DrawGrid(BRect update);
    void DrawCaption();
    void WriteTable(FILE* file);
    void Scroll(float distance);
    void Select(Results* machine);
    Results* NextToSelected(bool below);

    CompareWin* owner;
    ChartScale scale;
    bool byRatio = false;
    float ratioBase = -1; // the selected machine's best rate; -1: rates are shown
};
