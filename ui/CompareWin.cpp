#include "ui/CompareWin.h"

#include "foundation/LibFiles.h"
#include "foundation/LibNode.h"
#include "foundation/LibPath.h"
#include "foundation/Utf8.h"
#include "results/ChartPicture.h"
#include "results/ChartText.h"
#include "toolkit/LibControls.h"
#include "toolkit/MessageBoxes.h"
#include "ui/CompareResultsView.h"
#include "ui/CompareView.h"

#include <Application.h>
#include <Autolock.h>
#include <Button.h>
#include <CheckBox.h>
#include <ClipboardData.h>
#include <FilePanel.h>
#include <Message.h>
#include <Picture.h>
#include <Roster.h>
#include <ScrollView.h>
#include <StorageDefs.h>
#include <StringView.h>
#include <TypeConstants.h>
#include <WholeFile.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <fstream>
#include <iterator>

namespace {

constexpr uint32 kMsgSave = CompareResultsView::kMsgSave;
constexpr uint32 kMsgRatio = 1002;

constexpr float kMargin = 10;
constexpr float kLegendHeight = 20;
constexpr float kControlsTop = 38;
constexpr float kControlHeight = 26;
constexpr float kSaveWidth = 80;
constexpr float kLineHeight = 16;
constexpr float kLineGap = 4;
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

// For the next comparison too, until the program ends.
std::atomic<ChartOrder> gOrder = ChartOrder::kAsAdded;

// What pictures are copied as, and the name by whose ending they are written so.
const struct {
    const char* type;
    const char* name;
} kPictureTypes[] = { { "image/png", "chart.png" }, { "image/svg+xml", "chart.svg" } };

std::string ContentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// Adds the chart as it can be painted.
void AddPictures(BMessage& data, Comparison& comparison)
{
    // Only a file can be painted.
    const TemporaryFolder folder;
    if (!folder.Path())
        return;
    for (const auto& [type, name] : kPictureTypes) {
        const std::string path = std::string(folder.Path()) + "/" + name;
        if (!WriteChartPicture(path.c_str(), comparison))
            continue;
        const std::string picture = ContentsOf(path);
        data.AddData(type, B_MIME_TYPE, picture.data(), static_cast<ssize_t>(picture.size()));
    }
}

struct DroppedFile {
    LibString path;
    std::string name;
    bool isText;
};

// The files of a message's "refs".
std::vector<DroppedFile> FilesIn(const BMessage& message)
{
    std::vector<DroppedFile> files;
    entry_ref ref;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; i++) {
        char type[B_MIME_TYPE_LENGTH] = "";
        LibString path;
        if (!LibGetFullPath(ref, path))
            continue;
        LibGetMimeType(ref, type, false); // where it cannot be had it is no text
        files.push_back({ path, LibPrintable(ref.name), strcmp(type, "text/plain") == 0 });
    }
    return files;
}

// What is dropped is text; all else that holds machines comes by the program's arguments.
std::string HowToOpen(const std::string& name)
{
    return " is no plain text: if it holds results, use \"Open With\" or: tarvex " + name;
}

} // namespace

CompareWin::CompareWin(BLooper* looper, bool allowSave)
    : LibWindow(
        BRect(0, 0, 719, 439), "Tarvex Comparisons", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0),
      target(looper)
{
    SetName("CompareWin");
    comparison.order = gOrder; // before the chart's menu marks it
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
    frame.bottom -= kMargin + kLineHeight + kLineGap;
    chart = new CompareResultsView(frame.InsetByCopy(kBorder, kBorder), comparison);
    ChildAt(0)->AddChild(new BScrollView("scroll_view", chart, B_FOLLOW_ALL_SIDES, 0, false, true));
    chart->MakeFocus();

    frame = Bounds().InsetByCopy(kMargin, kMargin);
    frame.top = frame.bottom - kLineHeight;
    line = new BStringView(frame, "line", "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    ChildAt(0)->AddChild(line);
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
    if (!comparison.WriteStore(file))
        Say("The machines could not be stored: the next start of the program will not have them");
    UpdateScrollBars(); // it may have found machines that could not be read before
}

void CompareWin::LoadResults(const char* path)
{
    const BAutolock lock(this);
    if (lock.IsLocked())
        Tell(comparison.Load({ path }));
}

void CompareWin::LoadResults(BMessage* message)
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    std::vector<LibString> paths;
    std::vector<std::string> others;
    for (const DroppedFile& file : FilesIn(*message)) {
        if (file.isText)
            paths.push_back(file.path);
        else
            others.push_back(file.name + HowToOpen(file.name));
    }
    std::reverse(paths.begin(), paths.end());
    LoadOutcome outcome = comparison.Load(paths);
    outcome.refused.insert(outcome.refused.end(), others.begin(), others.end());
    Tell(outcome);
}

void CompareWin::OpenFiles(BMessage* message)
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    std::vector<std::string> paths;
    for (const DroppedFile& file : FilesIn(*message))
        paths.emplace_back(file.path);
    LoadOutcome outcome = comparison.Open(paths);
    const char* refusal = nullptr;
    for (int32 i = 0; message->FindString("refused", i, &refusal) == B_OK; i++)
        outcome.refused.emplace_back(refusal);
    Tell(outcome);
    if (const Results* first = comparison.machines.First())
        OfferTests(*first); // a run's once more
}

// Stored once: a store of thousands takes its time.
void CompareWin::Tell(const LoadOutcome& outcome)
{
    Say(outcome.Text());
    if (outcome.isRead)
        SaveToResource();
    UpdateScrollBars();
}

// The window may be too narrow for all of it.
void CompareWin::Say(const std::string& text)
{
    line->SetText(text.c_str());
    line->SetToolTip(text.c_str());
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
    const auto unpacked = machine.IsPacked() ? machine.Unpacked() : nullptr;
    for (const Metric& metric : unpacked ? *unpacked : machine)
        choices->AddItem(metric.description, new BMessage(kMsgTest));
    choices->Choose(before);
    TestItemSelected();
}

void CompareWin::SaveComparison()
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    if (const std::string error = comparison.WriteTable("Tarvex.compare"); !error.empty())
        Say("Could not write Tarvex.compare: " + error);
    else
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
    UpdateScrollBars();
}

void CompareWin::ChooserClosed(const BMessage& closing)
{
    legend->ChooserClosed(closing);
    chart->Invalidate();
}

// --- The chart's menu

void CompareWin::Copy()
{
    const std::string text = ComparisonAsText(comparison);
    if (text.empty())
        return Say("Nothing to copy: no test is chosen");
    BMessage data;
    data.AddData("text/plain", B_MIME_TYPE, text.data(), static_cast<ssize_t>(text.size()));
    AddPictures(data, comparison);
    if (copy_to_clipboard(data) == B_OK)
        Say("Copied: the table as text, the chart as a picture");
}

void CompareWin::ShowPicturePanel()
{
    if (!picturePanel) {
        const BMessenger thisWindow(this);
        const BMessage reply(kMsgPicturePanel);
        picturePanel = std::make_unique<BFilePanel>(B_SAVE_PANEL, &thisWindow, nullptr, &reply);
    }
    picturePanel->SetSaveText("Tarvex.svg");
    picturePanel->Show();
}

void CompareWin::SavePicture(const BMessage& reply)
{
    BPath path;
    if (!LibGetFilePath(&reply, path))
        return;
    const std::string name = LibPrintable(path.Path());
    if (WriteChartPicture(path.Path(), comparison))
        return Say("Saved: " + name);
    // The writer has told standard error only; most reasons can be asked for.
    std::string why = WhyNoPicture(path.Path());
    if (why.empty())
        why = WholeFile::WhyNot(path.Path());
    Say("Could not write " + name + (why.empty() ? "" : ": " + why));
}

void CompareWin::Forget(bool others)
{
    if (!comparison.selected)
        return;
    const int32 count = others ? comparison.ForgetOthers(*comparison.selected)
                               : comparison.Forget(*comparison.selected);
    if (count == 0)
        return Say("The run on this machine is not kept, so it cannot be forgotten");
    Say(std::to_string(count) + (count == 1 ? " machine" : " machines")
        + " forgotten; Ctrl+Z brings back what was forgotten since this window was opened");
    SaveToResource();
}

void CompareWin::Restore()
{
    const int32 count = comparison.Restore();
    if (count == 0)
        return;
    Say(std::to_string(count) + (count == 1 ? " machine is" : " machines are") + " back");
    SaveToResource();
}

void CompareWin::SetOrder(const BMessage& chosen)
{
    int32 order = 0;
    if (chosen.FindInt32("order", &order) != B_OK)
        return;
    comparison.order = static_cast<ChartOrder>(order);
    gOrder = comparison.order;
    UpdateScrollBars();
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
        case CompareResultsView::kMsgCopy: Copy(); break;
        case CompareResultsView::kMsgSavePicture: ShowPicturePanel(); break;
        case kMsgPicturePanel: SavePicture(*message); break;
        case CompareResultsView::kMsgForget: Forget(false); break;
        case CompareResultsView::kMsgForgetOthers: Forget(true); break;
        case CompareResultsView::kMsgRestore: Restore(); break;
        case CompareResultsView::kMsgOrder: SetOrder(*message); break;
        default: LibWindow::MessageReceived(message); break;
    }
}

bool CompareWin::QuitRequested()
{
    // By a message: the target's lock comes before this one. It quits this window then.
    target->PostMessage('cmpq', nullptr, this);
    return false;
}
