// What is compared: the machines, the test that is shown of them, the machine that percents refer
// to, and the scale of their chart. The machines outlive the program as an attribute of its file,
// and leave it as a table. Who shares one among threads locks.
#pragma once

#include "results/Results.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class LibNode;

// What became of files that were to be shown, as one line for their user.
struct LoadOutcome {
    int32 added = 0; // machines
    int32 known = 0; // machines that were there already, and were left out
    bool isRead = false; // one of the files could be read as results, be it without a machine
    std::vector<std::string> refused; // of each other file: "notes.txt is no results file"

    // "3 machines added, 1 was there already; notes.txt is no results file, and 2 more".
    [[nodiscard]] std::string Text() const;
};

// The scale of the chart, as plain arithmetic.
struct ChartScale {
    float maxScale = 100; // what a bar over the whole width stands for
    int32 step = 10; // between two lines of the grid

    // The scale for values up to greatest: a round number above it, in at most a hundred steps.
    static ChartScale For(double greatest);
    // The x of a value, from left for 0 to right for maxScale.
    [[nodiscard]] float XFor(double value, float left, float right) const;
};

// How the chart shows the machines; tables and the store have them as they were added.
enum class ChartOrder { kAsAdded, kByRate, kByName };

class Comparison {
public:
    ResultList machines; // the run on this machine first, if there is one
    Results* selected = nullptr; // the machine that percents refer to
    bool byRatio = false; // the chart shows percents
    ChartScale scale;
    ChartOrder order = ChartOrder::kAsAdded;
    float ratioBase = -1; // the selected machine's best rate; -1: rates are shown

    // Makes run the first machine, in place of an earlier run, and selects it. Moves run's cursor.
    // False, and nothing changes, if there is no memory.
    bool SetRun(Results& run);
    // Appends the machines of results files, also those that are there already. What cannot be
    // opened is left out.
    LoadOutcome Load(const std::vector<LibString>& paths);
    // Appends the machines of results files, packages, folders and runs, see ReadMachineFiles(),
    // but of equal machines only one. Standard error tells of each file that is refused.
    LoadOutcome Open(const std::vector<std::string>& paths);
    // Makes the test of this description current in all machines, also in those that come later,
    // and measures the scale; a machine without it is reported on standard error. Nothing is moved
    // as long as the first machine has no such test.
    void ChooseTest(const char* description);
    // Measures the scale anew; to be called after selected or byRatio was set.
    void UpdateScale();

    // The machines in the chart's order: by rate the best of the chosen test first, be that the
    // most or the fewest seconds, and those without it last. Good until machines change.
    [[nodiscard]] const std::vector<Results*>& InOrder();
    // The bottoms of their rows in the chart, in that order; places all frames. To be told by
    // RowsChanged() where one was opened or closed.
    [[nodiscard]] const std::vector<float>& RowBottoms();
    void RowsChanged() { shown.bottoms.clear(); }
    // The machine whose row y lies in, null where there is none.
    [[nodiscard]] Results* MachineAt(float y);
    // The machine below or above the selected one; where none is selected, the first. Null beyond
    // the first and the last.
    Results* NextToSelected(bool below);
    // The selected machine's best rate in a test, 0 if there is none.
    [[nodiscard]] double BaseRate(const Metric& metric) const;

    // Takes the machine away, or all others but the run; the run itself stays. How many: 0 if there
    // were none.
    int32 Forget(const Results& machine);
    int32 ForgetOthers(const Results& machine);
    // Puts those that were forgotten last back to their places. How many: 0 if there are none.
    int32 Restore();
    [[nodiscard]] bool CanRestore() const { return !forgotten.empty(); }

    // Appends the machines that are stored with a file, the program's own.
    void ReadStore(const LibNode& file);
    // Stores all machines but the run in place of those stored before. If these could not be read
    // yet, they are read now, or put aside if they are damaged; else they stay as they are. False,
    // with a line on standard error, if they could not be stored.
    bool WriteStore(LibNode& file);
    // Writes all machines as a table, the first one twice. Empty, or why it could not be written
    // whole, which standard error tells too: what was there stays then.
    [[nodiscard]] std::string WriteTable(const char* path) const;

private:
    struct Forgotten {
        int32 place; // among those that are not the run, as they were before
        std::string record;
        std::string origin, trueName;
        bool wasSelected;
    };

    // Worked out when it is first asked for after a change: a chart of thousands is drawn often.
    struct Shown {
        std::vector<Results*> machines;
        std::vector<float> bottoms;
        ChartOrder order = ChartOrder::kAsAdded; // which they are in
        std::optional<double> greatest; // their best rate in the chosen test
    };

    void ShowTest();
    int32 RemoveKnown(int32 first);
    int32 ForgetIf(const std::function<bool(const Results&)>& isMeant);
    int32 PlaceOfFirst();

    Shown shown;
    std::vector<std::vector<Forgotten>> forgotten; // by each time, the last at the end
    std::optional<Metric> test; // the chosen one's description; none at first
    bool isStoreRead = false; // what is stored is among the machines, and may be replaced by them
};
