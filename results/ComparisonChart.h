// The comparison as a chart, in the window and in pictures, and its colours.
#pragma once

#include "results/Comparison.h"

#include <GraphicsDefs.h>
#include <View.h>

#include <array>

constexpr int32 kNbrCpuColors = 8;

// The colours of 1 to 8 processors. Shared by chart and legend, changed by the colour chooser; used
// with the comparison window locked.
extern std::array<rgb_color, kNbrCpuColors> cpu_color;

// Gives them their first values again, with which every comparison window opens.
void ResetCpuColors();

// A row for each machine with a bar for each processor count, above a grid. The window's view and
// the pictures in files draw it by the same calls.
class ComparisonChart {
public:
    static constexpr float kFontSize = 10; // of the views that it is drawn into
    static constexpr float kRowHeight = 17; // of a machine that is not opened
    static constexpr float kTitleLineY = 14;
    static constexpr float kFirstRowY = 19;
    static constexpr float kNamesX = 21; // where the machines' names begin
    static constexpr float kBarsX = 320; // where the bars begin in the window
    static constexpr float kLegendEntryWidth = 66;
    static constexpr float kLegendBaseline = 11; // of an entry's name, from its top

    // barsStart: the bars' left, right of the names. They end at the view's right edge. lineStart:
    // the top of the line there, through the labels in a window.
    explicit ComparisonChart(Comparison& shown, float barsStart = kBarsX, float lineStart = 0)
        : comparison(shown), barsX(barsStart), lineTop(lineStart)
    {
    }

    // Of all rows with what is above them, in view units.
    [[nodiscard]] float Height() const;
    // Draws what of it lies in update; all machines' frames are where their pictures are then.
    void Draw(BView* view, BRect update);

    // Draws the legend's entry for index + 1 processors, or for the number that this colour stands
    // for: its colour and name. Returns the name.
    static LibString DrawLegendEntry(
        BView* view, BPoint leftTop, int32 index, rgb_color text, int32 processors = 0);

private:
    void DrawGrid(BView* view, BRect update) const;
    void DrawCaption(BView* view) const;

    Comparison& comparison;
    const float barsX;
    const float lineTop;
};
