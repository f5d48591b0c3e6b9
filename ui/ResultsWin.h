// The results of a run.
#pragma once

#include "results/Results.h"
#include "toolkit/DialogWindow.h"
#include "toolkit/OwnedWindow.h"

#include <Path.h>

#include <map>
#include <memory>
#include <string>

class BFilePanel;
class BListView;
class CompareWin;
class GetSysDeviceWin;

// One row for each test with its rates, the machine's processor count first. It keeps its own copy
// of the run. Closed by its user it is only hidden, so that the next run finds it; the main window
// asks QuitRequested() and quits it.
class ResultsWin : public DialogWindow {
public:
    explicit ResultsWin(const int& nbrCpus); // hidden
    ~ResultsWin() override;

    // Shows another run, also in the comparison if that is open. The window must be locked. Moves
    // the run's list cursor.
    void Update(Results& run, bool allowSaveCompare);
    // Shows the run in the comparison.
    void CompareResults();
    // Gives the desktop's clipboard the run as a table of text.
    void CopyResults() const;
    // Asks about an incomplete run, then for the names of unknown devices, then for a place to
    // save.
    void SaveResults();
    void ShowSavePanel();
    // Saves the run where the panel's reply says and packs it for the mail; asks how it is to be
    // sent. Each step goes on where an earlier one failed.
    void SaveResultFile(BMessage* reply);
    // Sends what was saved to the maker, with the user's description of the machine from the
    // alert's answer.
    void EmailResults(BMessage* answer);
    // Adds the machines of the results files among the message's "refs" to the comparison and shows
    // that; there need not have been a run.
    void CompareFiles(BMessage* files, bool allowSaveCompare);

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    static constexpr uint32 kMsgSavePanel = 503;

    void AddTitles(int nbrCpus);
    void AddTitle(const char* name, const char* text, float left, float width);
    void AddList();
    void AddButtons();
    void EmptyList();
    void ShowComparison();
    bool WantsIncompleteRun();
    void ShowDevices();
    void GetSysDeviceQuit(const BMessage& closing);
    void QuitDevices();
    void Pack();

    bool allowSaveCompare = false;
    BListView* list = nullptr;
    OwnedWindow<CompareWin> comparison; // while it is open
    OwnedWindow<GetSysDeviceWin> unknownDevices; // until the run was saved
    std::map<std::string, std::string> typedNames; // in its last form, for the next one
    std::unique_ptr<BFilePanel> savePanel; // made when first needed
    BPath saved; // what the mail takes along
    Results results;
};
