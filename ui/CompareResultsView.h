// The comparison chart: a row for each machine with a bar for each processor count, above a grid.
#pragma once

#include "results/Comparison.h"

#include <View.h>

// Draws a comparison. Clicks at machines, or the arrow keys and Enter, select them and show their
// devices. Lies in a scroll view; what it draws may be higher than itself. All calls with the
// window locked.
class CompareResultsView : public BView {
public:
    static constexpr uint32 kMsgSave = 1001;

    CompareResultsView(BRect frame, Comparison& comparison);

    // Whether bars show percents of the selected machine's best rate.
    void CompareByRatio(const bool& ratio);
    // Measures the scale anew; Redraw() shows it.
    void UpdateMaxScale() { comparison.UpdateScale(); }
    // Asks the window for the table, by kMsgSave.
    void Save();
    // Redraws all of it, with the scroll bar for the height that it has then.
    void Redraw();

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void FrameResized(float width, float height) override;

private:
    float ChartHeight() const;
    void Scroll(float distance);
    void Select(Results* machine);

    Comparison& comparison;
};
