// The results of a run.
#pragma once

#include "foundation/LibString.h"
#include "results/Results.h"
#include "toolkit/DialogWindow.h"
#include "toolkit/OwnedWindow.h"
#include "ui/UnsavedRun.h"

#include <ListItem.h>
#include <Path.h>

#include <map>
#include <memory>
#include <string>

class BFilePanel;
class BListView;
class CompareWin;
class GetSysDeviceWin;
class StatusLine;

// A row of the results list: a test and its rate for each processor count.
class ResultItem : public BListItem {
public:
    static constexpr int kMaxRates = 8;

    explicit ResultItem(const char* description);

    void Branch(const char* text);
    void Units(const char* text);
    // Sets how many rates the row shows. Rate() counts by itself.
    void Quantity(const int& rates);
    // Sets the rate of a slot and shows one rate more. A slot of kMaxRates or more, or below 0, is
    // ignored.
    void Rate(const int& slot, const float& value);

    const char* Description() const { return description; }
    const char* Units() const { return units; }
    int Quantity() const { return quantity; }
    float Rate(const int& slot) const { return rates[slot]; } // 0 to kMaxRates - 1

    void DrawItem(BView* owner, BRect frame, bool complete = false) override;

private:
    LibString branch; // not drawn
    LibString description;
    LibString units;
    int32 quantity = 0;
    float rates[kMaxRates] = {};
};

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
    // Keeps the run for the program's next start, until it is saved.
    void KeepUnsaved() { unsaved.Keep(results); }
    // Shows the run that an earlier start has kept so, and says which it is; nothing if there is
    // none any more. The window must be locked.
    void ShowUnsaved(bool allowSaveCompare);
    // Says it in the line beside the buttons, see StatusLine. The window must be locked.
    void Say(const std::string& text, const std::string& more = "");
    // Shows the run in the comparison.
    void CompareResults();
    // Gives the desktop's clipboard the run as a table of text.
    void CopyResults() const;
    // Asks about an incomplete run, then for the names of unknown devices, then for a place to
    // save.
    void SaveResults();
    void ShowSavePanel();
    // Saves the run where the panel's reply says and packs it for the mail; asks how it is to be
    // sent, unless nothing was written. The line says what there is now.
    void SaveResultFile(BMessage* reply);
    // Sends what was saved to the maker, with the user's description of the machine from the
    // alert's answer.
    void EmailResults(BMessage* answer);
    // Adds the machines of the results files among the message's "refs" to the comparison and shows
    // that; there need not have been a run.
    void CompareFiles(BMessage* files, bool allowSaveCompare);

    void MessageReceived(BMessage* message) override;

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
    std::string Pack();

    bool allowSaveCompare = false;
    BListView* list = nullptr;
    StatusLine* status = nullptr;
    OwnedWindow<CompareWin> comparison; // while it is open
    OwnedWindow<GetSysDeviceWin> unknownDevices; // until the run was saved
    std::map<std::string, std::string> typedNames; // in its last form, for the next one
    std::unique_ptr<BFilePanel> savePanel; // made when first needed
    BPath saved; // what the mail takes along
    Results results;
    UnsavedRun unsaved;
};
