// What is measured on a machine, and the machines of a comparison.
#pragma once

#include "foundation/LibString.h"
#include "foundation/LinkList.h"
#include "results/Metric.h"
#include "results/PackedRecord.h"

#include <Bitmap.h>
#include <OS.h>
#include <Point.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

class LibStringIterator;
class LibSysInfo;

struct TestType;

// One line about a device of the machine that results were measured on.
class RelatedDevices {
public:
    RelatedDevices() = default;
    RelatedDevices(const RelatedDevices& o) = default;
    virtual ~RelatedDevices() = default;
    RelatedDevices& operator=(const RelatedDevices& o) = default;
    // Devices are compared by their type alone.
    bool operator==(const RelatedDevices& o) const { return type == o.type; }
    bool operator>(const RelatedDevices& o) const { return type > o.type; }

    void Description(const int& newType, const char* text);
    // Type and text on standard error.
    void PrintToStream() const;

    int32 type = 0; // the device class, -1 for the display
    LibString description;
};

// The stopwatch. Start may be called again at any time; Stop and Elapsed count from the last one,
// from the machine's own start without any.
class LibTimer {
public:
    virtual ~LibTimer() = default;

    void Start();
    // Seconds since Start.
    float Stop();
    // The same, without stopping.
    float Elapsed() const;
    // Microseconds from the latest Start to the latest Stop, exactly.
    bigtime_t Micros() const { return stop - start; }
    // Both times on standard error.
    void PrintToStream() const;

private:
    bigtime_t start = 0; // system_time() of the latest Start and Stop
    bigtime_t stop = 0;
};

// Looks on while tests are measured, in the thread that measures them.
class SpanWatch {
public:
    virtual ~SpanWatch() = default;
    // Whether the test is to be timed now.
    virtual bool Wants(const TestType& test) = 0;
    // Whether what was drawn is to be read back, off the clock: the display server then has nothing
    // left to do when the next test begins.
    virtual bool WantsPixels() { return true; }
    // Directly before and directly after the stopwatch runs.
    virtual void Begins() = 0;
    virtual void Ended() = 0;
    // The test has no time, as its work cannot even begin.
    virtual void CouldNotBegin(const TestType& test, const std::string& why) = 0;
    // What it showed, and why the work was not done, or "".
    virtual void Measured(
        const TestType& test, const Metric& metric, double seconds, const std::string& undone) = 0;
};

constexpr int32 kRecordSize = 9000; // bytes of the longest record, end mark included

// The pictures of a processor beside a machine in the chart: 16 rows of 16 pixels in B_CMAP8.
extern const std::array<uint8, 256> Processor; // closed
extern const std::array<uint8, 256> ProcessorOpen; // without its lid: the machine is expanded

// One machine's run: the machine, its devices and a metric for each test. It is the list of its
// metrics, whose cursor marks the metric that the chart shows, and the stopwatch of the test that
// is running. Results of equal description are of the same machine.
//
// In the order of a run:
//
//     results.Reset();
//     while (results.CycleCpu()) {            // cpu: how many processors to measure
//         Metric* metric = results.NewTest("Savage", cycles);
//         results.Calibrate(cycles, 0);
//         results.StartTimer();
//         ...
//         metric->Time(static_cast<float>(results.EndTimer()));
//     }
class Results : public LinkList<Metric>, public LibTimer {
public:
    // isCurrent: the results of a run on this machine, not read from anywhere.
    explicit Results(bool isCurrent);
    // The same with what is known of this machine: who reads thousands of records asks it once.
    Results(bool isCurrent, const LibSysInfo& machine);
    // A machine that was read, one of thousands: where its record allows, it is packed. Then it has
    // no metric but the current one as an object, and all that is said here of its metrics is
    // answered from the record. What does not is Unpacked()'s: walking over them, and NewTest().
    static std::unique_ptr<Results> FromRecord(const char* record, const LibSysInfo& thisMachine);
    [[nodiscard]] bool IsPacked() const { return !packed.IsEmpty(); }
    // The same machine with all metrics; origin and trueName are not copied. Only if it is packed.
    [[nodiscard]] std::unique_ptr<Results> Unpacked() const;
    Results(const Results&) = delete;
    // Takes over all but calibration, current and the timer; icon shows what expanded says.
    // Moves o's cursors.
    Results& operator=(Results& o);
    bool operator==(const Results& o) const { return description.Compare(o.description) == 0; }
    bool operator>(const Results& o) const { return description.Compare(o.description) > 0; }

    // Deletes metrics and devices and describes this machine.
    void Reset();
    // Appends a line about this machine's screen to devices, then one about the first device of
    // each class on its buses. Names that the tables do not have are the user's, if they are to be
    // in results, see TypedPciNames.
    void FillTheseDevices();
    // Gives the lines about devices the names that they would get now, and returns whether they had
    // others. False, and nothing happens, for the results of another machine.
    bool RenameDevices();
    // Goes to the next processor count; false when all were measured.
    bool CycleCpu();
    // The metric of this description, made with these cycles if there is none yet. Null, with a
    // line on standard error, if there is no memory. Its next time is that of this pass: for each
    // one before that it was left out of it has a time of 0.
    Metric* NewTest(const char* text, const long& cycles);
    // Whether there is a metric of the probe's description. The cursor stays.
    [[nodiscard]] bool Has(const Metric& probe) const;
    // Its best rate, 0 if there is none. The cursor stays.
    [[nodiscard]] double BestRate(const Metric& probe) const;
    // Puts the cursor on it, or on none if there is none: false.
    bool MakeCurrent(const Metric& probe);
    bool MakeFirstCurrent();
    // After the last pass: the same for all metrics, so that each has a time for every pass.
    void FillGaps();
    // Measures what a test's own loop costs, which EndTimer then takes off: loops rounds of
    // randsPerLoop (1 to 6, else none) calls of rand(). With no loops the cost is 0.
    void Calibrate(const long& loops, int randsPerLoop);
    void StartTimer() { Start(); }
    // Seconds since StartTimer without the loop's own cost; below 0 if the test was the quicker.
    double EndTimer();
    // Seconds of all metrics together in this slot; 0 for a bad one. Moves the cursor.
    float Time(const int& slot);

    // If where is inside frame: toggles expanded and returns true.
    bool Contains(BPoint where);
    // Writes the record, one line without its end, into buffer, which has kRecordSize bytes.
    // Returns false, with a line on standard error, if it did not fit: then devices are missing,
    // or, if even these are too many, metrics; what is there is whole.
    bool Write(char* buffer) const;
    // Fills results made with isCurrent false from a record. What is damaged is left out, with a
    // line on standard error. Only one digit is read as the processor count, and each metric gets
    // as many times as that says.
    void Read(const char* line);

    // Parts of a table with so many columns a metric: the line of the metrics' names, the two lines
    // of their units and processor counts, and this machine's line.
    void SaveHeader(FILE* file, const int& columns) const;
    void SaveUnits(FILE* file, const int& columns) const;
    void Save(FILE* file, const int& columns) const;

    // The height of this machine's row in the chart, in pixels.
    [[nodiscard]] float RowHeight() const;
    // Sets frame for a row at y and moves y below it.
    void Place(float& y);
    // Draws the row at y (label, the current metric's bars from left on, devices if expanded) and
    // moves y below it; frame is where the picture is then. What lies outside update is placed but
    // not drawn.
    void Draw(BView* view, BRect update, const float& left, const float& scale,
        const rgb_color* colours, float& y, const bool& selected, const float& ratioBase);
    // Description and processor counts on standard error.
    void PrintToStream() const;

    BRect frame; // where the chart drew the label
    bool expanded = false; // the chart shows a bar for every processor count
    LibString description;
    int32 nbrCpus = 0;
    int32 cpu = 0; // the processor count that is measured now
    int32 pass = -1; // how many counts this run measured before that one
    int64 calibration = 0; // microseconds
    LinkList<RelatedDevices> devices;
    std::unique_ptr<BBitmap> icon; // 16 by 16 pixels
    bool current;
    std::string
        origin; // the file where it was read; "" for a run, and from the program's next start on
    std::string trueName; // beside description what its file knows of the machine, or ""
    SpanWatch* watch = nullptr; // of who measures into these; not owned, and not taken over

private:
    explicit Results(PackedRecord record);
    void Reset(const LibSysInfo& machine);
    bool KeepAsCurrent(std::unique_ptr<Metric> metric);
    void FillGaps(Metric& metric) const;
    void UpdateIcon();
    void ReadMachine();
    void ReadDevices(LibStringIterator& line, int32 nbrFields);
    void ReadMetric(LibStringIterator& line, const LibString& id);
    void ReadTimes(LibStringIterator& line, Metric& metric);
    void DrawLabel(BView* view, float left, float y, bool selected);
    void DrawDevices(BView* view, float baseline) const;

    PackedRecord packed;
};

// The machines of a comparison, in the order in which they are shown: the run on this machine, if
// there is one, first. Each machine's list cursor marks the metric that the chart shows.
class ResultList : public LinkList<Results> {
public:
    // The greatest rate of the machines' current metrics, 0 if no machine has one.
    [[nodiscard]] float MaxRate() const;
    // The machine whose label where lies in; its expanded flag is toggled. Null if there is none.
    Results* Contains(BPoint where);
    // The greatest processor count, 0 for an empty list.
    [[nodiscard]] int MaxNbrCpus() const;

    // Makes the metric of probe's description current in every machine. A machine without it has
    // no current metric then and is reported on standard error.
    void MakeCurrent(const Metric& probe);
    // Makes the first metric current in every machine; one without metrics is reported.
    void FirstCurrent();

    // Writes each machine's line of the table, so many columns a metric.
    void Save(FILE* file, const int& columns) const;
    // Each machine's description and processor counts on standard error.
    void PrintToStream() const;
};
