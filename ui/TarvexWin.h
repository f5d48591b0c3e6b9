// The main window: the user ticks test groups, starts a run and follows it.
#pragma once

#include "engine/Benchmark.h"
#include "foundation/LibString.h"
#include "results/TestCatalogue.h"
#include "toolkit/LibWindow.h"
#include "toolkit/OwnedWindow.h"
#include "ui/AnimateCursor.h"
#include "ui/RunEstimate.h"
#include "ui/RunWatch.h"

#include <MachineRun.h>
#include <SleepInhibitor.h>

#include <memory>

class BBox;
class BCheckBox;
class BMenuItem;
class BStatusBar;
class BStringView;
class LibSysInfo;
class MainMenuBar;
class ResultsWin;

// Idle, showing the estimate --StartTest()--> Running, showing the status --'LThC'--> Idle, the
// status empty until the next check box changes. Nothing stops a run but the window's end.
class TarvexWin : public LibWindow {
public:
    explicit TarvexWin(bool allowSaveComparison);
    ~TarvexWin() override;

    // Switches every group on.
    void SelectAll();
    int32 CountSelected();
    // Shows how long a run of the selected groups takes. While running the status stays.
    void EstimateTime();
    // Asks and warns where needed, then starts the run; the user may abort. Only in Idle, else
    // nothing happens.
    void StartTest();
    // Shows the message's "status", and how far the run has come.
    void StatusChange(BMessage* message);
    // The end of a run: its results come to the front. A user who is elsewhere is told.
    void BenchmarkChange(BMessage* message);
    // Brings the results of the last run to the front, at first those of an earlier start that
    // nobody has saved.
    void ShowResults();
    // Shows the results files among the message's "refs" in the comparison.
    void CompareFiles(BMessage* files);
    // "Test" can be chosen while a group is selected and no run is under way.
    void SetDescription();

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void AddMenu();
    void AddViews();
    BBox* AddBox(float& top, const char* name, const char* label, int32 rows);
    void AddGroups(GroupBox where, float& top, const char* name, const char* label);
    void MakeResults(int32 nbrCpus);

    RunEstimate Estimate() const;
    bool PrepareTest();
    bool IsSelected(size_t group) const;
    bool ScreenIsAccepted(const LibSysInfo& info);
    bool MachineIsHad();
    void WarnOnce();
    void ShowProgress();
    void EndRun();

    MainMenuBar* menuBar = nullptr;
    BMenuItem* testItem = nullptr;
    BMenuItem* resultsItem = nullptr;
    BView* background = nullptr;
    BCheckBox* groups[kNbrTestGroups] = {}; // null: the group has none
    BBox* statusBox = nullptr;
    BStringView* statusText = nullptr; // the estimate or the status
    BStatusBar* progressBar = nullptr; // hidden in Idle
    bool warned = false; // of the pass with one processor
    bool allowSaveComparison;
    bool running = false;
    int32 unsavedCpus = 0; // of the run that an earlier start has kept; 0: none, or it was shown
    int32 titledCpus = 0; // for which the results window was made
    OwnedWindow<ResultsWin> results;
    BMachineRun machineRun; // these end after benchmark, which may be under way
    RunWatch watch;
    RunProgress progress;
    std::unique_ptr<BSleepInhibitor> awake; // while running
    Benchmark benchmark;
    AnimateCursor cursor;
};
