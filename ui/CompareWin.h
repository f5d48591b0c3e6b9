// The comparison's window: the chart of all machines, the choice of the test, and the legend.
#pragma once

#include "results/Comparison.h"
#include "toolkit/LibWindow.h"

#include <memory>
#include <string>

class BCheckBox;
class BFilePanel;
class BStringView;
class CompareResultsView;
class CompareView;
class LibMenuButton;

// It keeps every machine that it was ever given but the current run, and has them again at the
// program's next start. A line below the chart says what became of files and tables. Closed by its
// user it tells its target, by 'cmpq', which quits it.
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
    // The same for the plain text files of a message's "refs"; the line below the chart tells how
    // to open others.
    void LoadResults(BMessage* message);
    // Appends the machines of a message's "refs", whatever their type, but of equal ones only one,
    // and tells of its strings "refused" too. Without a run the first machine's tests are offered.
    void OpenFiles(BMessage* message);
    // Writes the table of all machines.
    void SaveComparison();
    // Stores the machines with the program's file, see Comparison::WriteStore.
    void SaveToResource();

    // Fits the scroll bar to the chart's height and redraws the chart. The window must be locked.
    void UpdateScrollBars();

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    static constexpr uint32 kMsgTest = 1000; // a test was chosen
    static constexpr uint32 kMsgPicturePanel = 1003;

    void AddControls(bool allowSave);
    void AddChart();
    void ReadFromResource();
    void Tell(const LoadOutcome& outcome);
    void Say(const std::string& text);
    void OfferTests(const Results& machine);
    void TestItemSelected();
    void RatioChanged();
    void ChooserClosed(const BMessage& closing);
    void Copy();
    void ShowPicturePanel();
    void SavePicture(const BMessage& reply);
    void Forget(bool others);
    void Restore();
    void SetOrder(const BMessage& chosen);

    BLooper* target;
    Comparison comparison;
    CompareView* legend = nullptr;
    LibMenuButton* choices = nullptr;
    BCheckBox* ratio = nullptr;
    CompareResultsView* chart = nullptr;
    BStringView* line = nullptr;
    std::unique_ptr<BFilePanel> picturePanel; // made when first needed
};
