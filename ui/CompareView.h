// The two views of the comparison, the chart and its legend. All calls with the window locked.
#pragma once

#include "results/Comparison.h"
#include "results/ComparisonChart.h"
#include "toolkit/OwnedWindow.h"

#include <GraphicsDefs.h>
#include <View.h>

class LibColorChooser;

// The chart: a row for each machine with a bar for each processor count, above a grid.
// Clicks at machines, or the arrow keys and Enter, select them and show their devices. Lies in a
// scroll view; what it draws may be higher than itself.
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

// The legend: the colour of each processor count. A click on one, or the arrow keys and Enter,
// opens the colour chooser for it.
class CompareView : public BView {
public:
    explicit CompareView(BRect frame); // gives the colours their first values
    ~CompareView() override;

    // Takes the chooser's colour over and ends it, if the message says that it closes, and not one
    // that was chosen from before.
    void ChooserClosed(const BMessage& closing);
    // Closes the chooser, if one is open, without its colour: the window goes.
    void CloseChooser();

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MakeFocus(bool focus = true) override;

private:
    BRect FrameOf(int32 index) const;
    void MoveCursor(int32 step);
    void Choose(int32 index);

    OwnedWindow<LibColorChooser> chooser; // open
    int32 chosen = 0; // the colour that it is for
    int32 cursor = 0; // the one that Enter chooses
};
