// The results of a run.
#pragma once

#include "results/Results.h"
#include "toolkit/DialogWindow.h"

class BListView;

// One row for each test with its rates, the machine's processor count first. It keeps its own copy
// of the run. Closed by its user it is only hidden, so that the next run finds it; the main window
// asks QuitRequested() and quits it.
class ResultsWin : public DialogWindow {
public:
    explicit ResultsWin(const int& nbrCpus); // hidden
    ~ResultsWin() override;

    // Shows another run. The window must be locked. Moves the run's list cursor.
    void Update(Results& run, bool allowSaveCompare);

    void DispatchMessage(BMessage* message, BHandler* target) override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void AddTitles(int nbrCpus);
    void AddTitle(const char* name, const char* text, float left, float width);
    void AddList();
    void AddButtons();
    void EmptyList();
    void Close();

    bool allowSaveCompare = false;
    BListView* list = nullptr;
    Results results;
};
