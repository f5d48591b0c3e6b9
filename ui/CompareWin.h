// The comparison: the chart of all machines, the choice of the test, and the legend.
#pragma once

#include "toolkit/LibWindow.h"

class BCheckBox;
class BScrollView;
class CompareResultsView;
class CompareView;
class LibMenuButton;
class Results;

// It keeps every machine that it was ever given but the current run, and has them again at the
// program's next start. Closed by its user it tells its target, by 'cmpq', which quits it.
class CompareWin : public LibWindow {
public:
    // allowSave: with a button that writes the table.
    CompareWin(BLooper* target, bool allowSave); // hidden
    ~CompareWin() override;

    // Each locks by itself:
    // Makes run the first machine and offers its tests. Moves the run's cursor.
    void SetResults(Results& run);
    // Appends the machines of a results file, nothing if it cannot be opened, and stores them.
    void LoadResults(const char* path);
    // The same for the plain text files of a message's "refs".
    void LoadResults(BMessage* message);
    // Appends the machines of the files of a message's "refs", whatever their type. Without a run
    // the first machine's tests are offered.
    void OpenFiles(BMessage* message);
    // Writes the table of all machines.
    void SaveComparison();
    // Replaces the stored machines by those shown, without the current run. If they could not be
    // read before, they are shown too, or else they stay as they are, with a line on standard
    // error.
    void SaveToResource();

    // Fits the scroll bar to the chart's height. The window must be locked.
    void UpdateScrollBars();

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    static constexpr uint32 kMsgTest = 1000; // a test was chosen

    void AddControls(bool allowSave);
    void AddChart();
    void ReadFromResource();
    void OfferTests(Results& machine);
    void TestItemSelected();
    void RatioChanged();
    void ChooserClosed();

    BLooper* target;
    CompareView* legend = nullptr;
    LibMenuButton* choices = nullptr;
    BCheckBox* ratio = nullptr;
    BScrollView* scroller = nullptr;
    CompareResultsView* chart = nullptr;
    bool isStoreRead = false; // what is stored is shown, and may be replaced by what is shown
};
