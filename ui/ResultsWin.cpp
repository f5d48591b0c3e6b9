#include "ui/ResultsWin.h"

#include "toolkit/ButtonRow.h"
#include "ui/CompareWin.h"
#include "ui/GetSysDeviceWin.h"
#include "ui/ResultItem.h"

#include <Button.h>
#include <FilePanel.h>
#include <ListView.h>
#include <Message.h>
#include <ScrollView.h>
#include <StringView.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr uint32 kMsgCancel = 500;
constexpr uint32 kMsgCompare = 501;
constexpr uint32 kMsgSave = 502;
constexpr uint32 kMsgEmail = 5000;

// In the background view.
constexpr float kRatesX = 300;
constexpr float kRateWidth = 55;
constexpr float kRightMargin = 25; // holds the scroll bar
constexpr float kFontSize = 10;

BRect FrameFor(int nbrCpus)
{
    const float width = kRatesX + kRateWidth * float(nbrCpus) + kRightMargin;
    return BRect(0, 0, std::max(width, 440.0f), 470);
}

} // namespace

ResultsWin::ResultsWin(const int& nbrCpus)
    : DialogWindow(FrameFor(nbrCpus), "ResultsWin", "Results"), results(false)
{
    AddButtons();
    AddTitles(nbrCpus);
    AddList();
    const BRect frame = Frame();
    SetSizeLimits(frame.Width(), 4000, 200, 4000);
    SetPosition(kBesideMain);
    HideOnClose();
}

ResultsWin::~ResultsWin()
{
    EmptyList();
}

void ResultsWin::AddTitles(int nbrCpus)
{
    AddTitle("banner1", "Test", 15, 60);
    AddTitle("banner2", "Units", 198, 60);
    for (int k = 0; k < nbrCpus; k++) {
        LibString name;
        LibString text;
        name.Formatted("cpus%d", nbrCpus - k);
        text.Formatted("%d CPU", nbrCpus - k);
        AddTitle(name, text, kRatesX + kRateWidth * float(k), 50);
    }
}

void ResultsWin::AddTitle(const char* name, const char* text, float left, float width)
{
    BStringView* title = new BStringView(BRect(left, 3, left + width, 3 + 14), name, text);
    title->SetFontSize(kFontSize);
    Background()->AddChild(title);
}

void ResultsWin::AddList()
{
    BRect frame = Background()->Bounds();
    frame.left += 10;
    frame.top += 20;
    frame.right -= kRightMargin;
    frame.bottom -= 10;
    list = new BListView(frame, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES);
    list->SetFontSize(kFontSize);
    Background()->AddChild(new BScrollView("scroll", list, B_FOLLOW_ALL_SIDES, 0, false, true));
    list->MakeFocus();
}

void ResultsWin::AddButtons()
{
    ButtonRow* row = new ButtonRow;
    row->AddButton("cancel", "Cancel", kMsgCancel);
    row->AddButton("compare", "Compare...", kMsgCompare);
    row->AddButton("save", "Save...", kMsgSave);
    SetDefaultRow(row);
}

void ResultsWin::Update(Results& run, bool allow)
{
    allowSaveCompare = allow;
    results.Clear();
    results = run;

    EmptyList();
    for (const Metric& metric : results) {
        ResultItem* item = new ResultItem(metric.description);
        item->Units(metric.units);
        for (int slot = 0; slot < metric.Slots(); slot++)
            item->Rate(slot, float(metric.Rate(slot)));
        list->AddItem(item);
    }
    if (comparison.IsThere())
        CompareResults();
}

void ResultsWin::CompareResults()
{
    ShowComparison();
    comparison.With([this](CompareWin& window) { window.SetResults(results); });
    fprintf(stderr, "time 2: %.3f 1: %.3f\n", double(results.Time(1)), double(results.Time(0)));
}

void ResultsWin::CompareFiles(BMessage* files, bool allow)
{
    allowSaveCompare = allow;
    ShowComparison();
    comparison.With([files](CompareWin& window) { window.OpenFiles(files); });
}

void ResultsWin::ShowComparison()
{
    comparison.Show([this] {
        auto* window = new CompareWin(this, allowSaveCompare);
        window->SetPosition(kBesideMain);
        return window;
    });
}

void ResultsWin::EmptyList()
{
    while (BListItem* item = list->RemoveItem(list->CountItems() - 1))
        delete item;
}

void ResultsWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case kMsgCancel: PostMessage(B_QUIT_REQUESTED); break;
        case kMsgCompare: CompareResults(); break;
        case kMsgSave: SaveResults(); break;
        case kMsgSavePanel: SaveResultFile(message); break;
        case kMsgEmail: EmailResults(message); break;
        case 'cmpq': comparison.Closed(*message); break;
        case 'gsdq': GetSysDeviceQuit(*message); break;
        default: DialogWindow::MessageReceived(message); break;
    }
}

bool ResultsWin::QuitRequested()
{
    savePanel.reset();
    comparison.End();
    unknownDevices.End();
    return DialogWindow::QuitRequested();
}
