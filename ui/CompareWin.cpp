#include "ui/CompareWin.h"

#include "foundation/LibFiles.h"
#include "foundation/LibNode.h"
#include "foundation/LibPath.h"
#include "toolkit/LibControls.h"
#include "toolkit/MessageBoxes.h"
#include "ui/CompareView.h"

#include <Application.h>
#include <Autolock.h>
#include <Button.h>
#include <CheckBox.h>
#include <Message.h>
#include <Roster.h>
#include <ScrollView.h>
#include <StorageDefs.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr uint32 kMsgSave = CompareResultsView::kMsgSave;
constexpr uint32 kMsgRatio = 1002;

constexpr float kMargin = 10;
constexpr float kLegendHeight = 20;
constexpr float kControlsTop = 38;
constexpr float kControlHeight = 26;
constexpr float kSaveWidth = 80;
constexpr float kChartTop = kControlsTop + kControlHeight + 8;

// The program's file, which keeps the machines; false if the application cannot tell.
bool GetOwnFile(entry_ref& ref)
{
    app_info info;
    if (!be_app || be_app->GetAppInfo(&info) != B_OK)
        return false;
    ref = info.ref;
    return true;
}

// The files of a message's "refs" that are of the type, null: of any.
std::vector<LibString> FilesIn(const BMessage& message, const char* type)
{
    std::vector<LibString> paths;
    entry_ref ref;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; i++) {
        char mimeType[B_MIME_TYPE_LENGTH] = "";
        LibString path;
        const bool isWanted =
            !type || (LibGetMimeType(ref, mimeType, false) && strcmp(mimeType, type) == 0);
        if (isWanted && LibGetFullPath(ref, path))
            paths.push_back(path);
    }
    return paths;
}

} // namespace

CompareWin::CompareWin(BLooper* looper, bool allowSave)
    : LibWindow(
        BRect(0, 0, 719, 419), "Tarvex Comparisons", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0),
      target(looper)
{
    SetName("CompareWin");
    CloseOnEscape();
    AddControls(allowSave);
    AddChart();
    // Last, as it shows what it has read: in the chart, under the chosen test.
    ReadFromResource();
}

// The results window quits this one unasked when the program ends; the chooser goes first, as its
// owner goes with the views.
CompareWin::~CompareWin()
{
    legend->CloseChooser();
}

void CompareWin::AddControls(bool allowSave)
{
    BView* background = new BView(Bounds(), "bgview", B_FOLLOW_ALL_SIDES, 0);
    background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(background);
    const float right = Bounds().right;
    legend = new CompareView(BRect(kMargin, 10, right - kMargin, 10 + kLegendHeight));
    background->AddChild(legend);

    BRect frame(kMargin, kControlsTop, kMargin + 300, kControlsTop + kControlHeight);
    choices = new LibMenuButton(frame, "choices", "Test");
    choices->AddItem("Overall", nullptr);
    background->AddChild(choices);
    frame.Set(frame.right + 15, frame.top, frame.right + 240, frame.bottom);
    ratio = new BCheckBox(frame, "ratio", "Percent of Current Selection", new BMessage(kMsgRatio));
    background->AddChild(ratio);
    const float saveRoom = allowSave ? kMargin + kSaveWidth : 0;
    // In a narrower window the button would lie over the box.
    SetSizeLimits(frame.right + saveRoom + kMargin, 8000, 200, 8000);
    if (!allowSave)
        return;
    frame.Set(right - kMargin - kSaveWidth, frame.top, right - kMargin, frame.bottom);
    background->AddChild(
        new BButton(frame, "save", "Save", new BMessage(kMsgSave), B_FOLLOW_RIGHT | B_FOLLOW_TOP));
}

void CompareWin::AddChart()
{
    constexpr float kBorder = 2;
    BRect frame = Bounds();
    frame.top = kChartTop;
    frame.InsetBy(kMargin, 0);
    frame.right -= B_V_SCROLL_BAR_WIDTH;
    frame.bottom -= kMargin;
    chart = new CompareResultsView(frame.InsetByCopy(kBorder, kBorder), comparison);
    ChildAt(0)->AddChild(new BScrollView("scroll_view", chart, B_FOLLOW_ALL_SIDES, 0, false, true));
    chart->MakeFocus();
}

void CompareWin::UpdateScrollBars()
{
    chart->Redraw();
}

void CompareWin::ReadFromResource()
{
    if (entry_ref ref; GetOwnFile(ref))
        comparison.ReadStore(LibNode(&ref));
    TestItemSelected();
}

void CompareWin::SaveToResource()
{
    const BAutolock lock(this);
    entry_ref ref;
    if (!lock.IsLocked() || !GetOwnFile(ref))
        return;
    LibNode file(&ref);
    comparison.WriteStore(file);
    UpdateScrollBars(); // it may have found machines that could not be read before
}

void CompareWin::LoadResults(const char* path)
{
    const BAutolock lock(this);
    if (lock.IsLocked())
        Load({ path });
}

void CompareWin::LoadResults(BMessage* message)
{
    const BAutolock lock(this);
    std::vector<LibString> paths = FilesIn(*message, "text/plain");
    std::reverse(paths.begin(), paths.end());
    if (lock.IsLocked())
        Load(paths);
}

void CompareWin::OpenFiles(BMessage* message)
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    Load(FilesIn(*message, nullptr));
    const Results* first = comparison.machines.First();
    // A run has offered its tests already, and they stay.
    if (first && !first->current)
        OfferTests(*first);
}

// Stored once: a store of thousands takes its time.
void CompareWin::Load(const std::vector<LibString>& paths)
{
    if (comparison.Load(paths))
        SaveToResource();
    UpdateScrollBars();
}

void CompareWin::SetResults(Results& run)
{
    const BAutolock lock(this);
    if (lock.IsLocked() && comparison.SetRun(run))
        OfferTests(*comparison.selected);
}

void CompareWin::OfferTests(const Results& machine)
{
    // A copy: the text is that of an item, which goes.
    const LibString before(choices->Text());
    choices->MakeEmpty();
    for (const Metric& metric : machine)
        choices->AddItem(metric.description, new BMessage(kMsgTest));
    choices->Choose(before);
    TestItemSelected();
}

void CompareWin::SaveComparison()
{
    const BAutolock lock(this);
    if (lock.IsLocked() && comparison.WriteTable("Tarvex.compare"))
        LibInfo("Tarvex.compare has been created."); // the chart may be drawn meanwhile
}

void CompareWin::TestItemSelected()
{
    comparison.ChooseTest(choices->Text());
    UpdateScrollBars();
}

void CompareWin::RatioChanged()
{
    chart->CompareByRatio(ratio->Value() == B_CONTROL_ON);
    chart->Redraw();
}

void CompareWin::ChooserClosed(const BMessage& closing)
{
    legend->ChooserClosed(closing);
    chart->Invalidate();
}

void CompareWin::MessageReceived(BMessage* message)
{
    // First, as what is dropped has whatever code its sender gave it.
    if (message->WasDropped()) {
        LoadResults(message);
        return;
    }
    switch (message->what) {
        case kMsgTest: TestItemSelected(); break;
        case kMsgSave: SaveComparison(); break;
        case kMsgRatio: RatioChanged(); break;
        case 'ColC': ChooserClosed(*message); break;
        default: LibWindow::MessageReceived(message); break;
    }
}

bool CompareWin::QuitRequested()
{
    legend->CloseChooser();
    // By a message: the target's lock comes before this one. It quits this window then.
    target->PostMessage('cmpq', nullptr, this);
    return false;
}
