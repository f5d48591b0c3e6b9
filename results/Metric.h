// One test of a run and its time for each processor count: slot 0 is measured on all processors,
// every further slot on one fewer. Metrics of equal description are the same test.
#pragma once

#include "foundation/LibString.h"

#include <GraphicsDefs.h>
#include <SupportDefs.h>

#include <cstdio>

constexpr int kMostTimes = 8; // slots of a metric: one for each processor that a run can use

class BView;

// A rate as text: "%.1f", with a point in every locale. One home for the digits, so that list,
// table and files show the same.
[[nodiscard]] LibString FormatRate(const double& rate);

class Metric {
public:
    Metric() = default;
    Metric(const Metric&) = delete;
    virtual ~Metric() = default;
    // Takes over everything but the drawn flags.
    Metric& operator=(const Metric& o);
    bool operator==(const Metric& o) const { return description.Compare(o.description) == 0; }
    bool operator>(const Metric& o) const { return description.Compare(o.description) > 0; }

    void Index(const long& id) { index = static_cast<int32>(id); }
    void NbrCycles(const long& n) { cycles = static_cast<int32>(n); }
    void Description(const char* text) { description = text; }
    void Units(const char* text) { units = text; }
    // Records the next slot in seconds. A ninth time is dropped, with a line on standard error.
    void Time(const float& seconds);

    // Cycles per second; 0 where no time was recorded, the bare seconds where cycles is 0.
    [[nodiscard]] double Rate(const int& slot) const;
    // The largest rate, and its slot, the first of equal ones. 0, and slot as it was, if no rate is
    // above 0.
    double MaxRate(int& slot) const;
    [[nodiscard]] double BestRate() const; // the same alone
    // The slot with the largest rate below limit and above 0 that is not drawn yet: marks it drawn
    // and sets limit to its rate, so that repeated calls go from the fastest to the slowest. -1,
    // and limit as it was, if there is none. Of equal rates only the first is ever found.
    int NextSmallestRate(float& limit);
    void SetDrawn(const bool& value); // all slots
    void SetDrawn(const int& slot, const bool& value);
    // True if the description is of more than one word.
    [[nodiscard]] bool HasSubs() const { return description.Contain(' '); }
    // The slots that hold a time, 0 to 8.
    [[nodiscard]] int Slots() const;
    // Writes the cells of a table with so many columns a metric, each with its tab: empty ones for
    // counts that were not measured, then the rates.
    void Save(FILE* file, const int& columns) const;
    // Draws a bar for each slot, the longest first, between left and the view's right edge, which
    // stands for scale, into the row at y, and moves y below the row. The colours are those of 1 to
    // 8 processors. With a ratioBase above 0 the bars show percents of that rate.
    void Draw(BView* view, const float& scale, const float& left, const rgb_color* colours,
        float& y, const float& ratioBase);
    // All fields, one line, on standard error.
    void PrintToStream() const;

    int32 index = 0; // the type, see MetricName
    int32 nbrTimes = 0;
    float times[kMostTimes] = {}; // seconds
    int32 cycles = 1; // units of work done in one timing
    LibString description;
    LibString units; // of the rate
    bool drawn[kMostTimes] = {};
};
