#include "ui/TarvexWin.h"

#include "sysinfo/LibSysInfo.h"
#include "toolkit/LibApp.h"
#include "toolkit/MessageBoxes.h"
#include "ui/AnimateCursor.h"
#include "ui/ResultsWin.h"

#include <Alert.h>
#include <Autolock.h>
#include <Box.h>
#include <CheckBox.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>
#include <Notification.h>
#include <OS.h>
#include <StatusBar.h>
#include <StringView.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr uint32 kMsgTest = 100;
constexpr uint32 kMsgAll = 200;
constexpr uint32 kMsgResults = 'Rslt';

constexpr char kEstimateLabel[] = "Estimated Test Time";
constexpr char kStatusLabel[] = "Status";

// Geometry of the background view and its boxes. The widest text is that of a disk group's status.
constexpr float kWidth = 300;
constexpr float kMargin = 10;
constexpr float kBoxGap = 8;
constexpr float kBoxTop = 22; // the box's label
constexpr float kBoxBottom = 3;
constexpr float kInset = 12;
constexpr float kRowHeight = 22; // of a check box or a line of text
constexpr float kBarHeight = 6; // of the progress below the status

constexpr float kCursorPeriod = 0.1f;
constexpr long kRunPriority = 20;

// Of a row in a box.
BRect RowFrame(int32 row)
{
    const float top = kBoxTop + kRowHeight * static_cast<float>(row);
    return BRect(kInset, top, kWidth - 2 * kMargin - kInset, top + kRowHeight - 2);
}

bool IsOfCheckBox(const BMessage& message)
{
    return std::any_of(std::begin(kTestGroups), std::end(kTestGroups), [&](const TestGroup& group) {
        return group.box != GroupBox::kNone && group.what == message.what;
    });
}

int32 NbrCpus()
{
    system_info info {};
    get_system_info(&info);
    return info.cpu_count;
}

} // namespace

TarvexWin::TarvexWin(bool allow)
    : LibWindow(BRect(0, 0, kWidth, 100), "Tarvex", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
        B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_QUIT_ON_WINDOW_CLOSE),
      allowSaveComparison(allow), cursor("LoadCursor", kNbrBusyCursors)
{
    SetName("TarvexWin");
    AddMenu();
    AddViews();
    for (long i = 0; i < kNbrBusyCursors; i++)
        cursor.SetCursor(i, kBusyCursors[i]);
    benchmark.results.watch = watch.Spans();
    SetMainWindow();
    SetPosition();
}

TarvexWin::~TarvexWin() = default;

void TarvexWin::AddMenu()
{
    menuBar = new MainMenuBar(BRect(0, 0, kWidth, 20), "Tarvex");
    BMenu* menu = new BMenu("Benchmark");
    testItem = new BMenuItem("Test", new BMessage(kMsgTest), 'T');
    testItem->SetEnabled(false);
    menu->AddItem(testItem);
    menu->AddItem(new BMenuItem("All", new BMessage(kMsgAll), 'A'));
    if (const auto unsaved = UnsavedRun().Read())
        unsavedCpus = unsaved->nbrCpus;
    resultsItem = new BMenuItem("Results", new BMessage(kMsgResults), 'R');
    resultsItem->SetEnabled(unsavedCpus > 0);
    menu->AddItem(resultsItem);
    menuBar->AddItem(menu);
    AddChild(menuBar);
}

// The boxes one below the other; the window ends below the last view.
void TarvexWin::AddViews()
{
    BRect frame = Bounds();
    frame.top = menuBar->Frame().bottom + 1;
    background = new BView(frame, "bgview", B_FOLLOW_ALL_SIDES, 0);
    background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(background);

    float top = kMargin;
    AddGroups(GroupBox::kArchitecture, top, "cpubox", "Architecture");
    AddGroups(GroupBox::kDisk, top, "diskbox", "Disk");

    statusBox = AddBox(top, "timebox", kEstimateLabel, 1);
    statusText = new BStringView(RowFrame(0), "est_time", "0:00");
    statusBox->AddChild(statusText);
    statusBox->ResizeBy(0, kBarHeight);
    top += kBarHeight;
    BRect bar = RowFrame(0);
    bar.top = bar.bottom + 1;
    bar.bottom = bar.top + kBarHeight - 1;
    progressBar = new BStatusBar(bar, "progress");
    progressBar->SetMaxValue(1);
    progressBar->Hide();
    statusBox->AddChild(progressBar);

    const BRect tip(kMargin, top, kWidth - kMargin, top + kRowHeight - 2);
    background->AddChild(new BStringView(tip, "tip_help", "Select <Shift><F1> for on-line help"));
    ResizeTo(kWidth, frame.top + tip.bottom + kBoxGap);
}

// Adds a box for so many rows at top, which moves on to where the next one begins.
BBox* TarvexWin::AddBox(float& top, const char* name, const char* label, int32 rows)
{
    const float bottom = top + kBoxTop + static_cast<float>(rows) * kRowHeight + kBoxBottom;
    BBox* box = new BBox(BRect(kMargin, top, kWidth - kMargin, bottom), name);
    box->SetLabel(label);
    background->AddChild(box);
    top = bottom + kBoxGap;
    return box;
}

// Adds a box with a check box for each group that stands there.
void TarvexWin::AddGroups(GroupBox where, float& top, const char* name, const char* label)
{
    const auto isThere = [where](const TestGroup& group) { return group.box == where; };
    const auto rows = std::count_if(std::begin(kTestGroups), std::end(kTestGroups), isThere);
    BBox* box = AddBox(top, name, label, static_cast<int32>(rows));
    int32 row = 0;
    for (size_t i = 0; i < kNbrTestGroups; i++) {
        const TestGroup& group = kTestGroups[i];
        if (!isThere(group))
            continue;
        groups[i] =
            new BCheckBox(RowFrame(row++), group.viewName, group.label, new BMessage(group.what));
        box->AddChild(groups[i]);
        // Only the box and its label take clicks, not the space beside them.
        groups[i]->ResizeToPreferred();
    }
}

// Made when the first run ends, so that the main window need not wait for it. Results kept from
// another machine may have had more processors, and need other columns.
void TarvexWin::MakeResults(int32 nbrCpus)
{
    if (nbrCpus != titledCpus)
        results.End();
    titledCpus = nbrCpus;
    results.Make([nbrCpus] {
        auto* window = new ResultsWin(nbrCpus);
        // Its thread runs from the start, so that any thread may lock it.
        // A window counts how often it was hidden, so that after both calls it still is.
        window->Hide();
        window->Show();
        return window;
    });
}

void TarvexWin::SelectAll()
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    for (BCheckBox* group : groups)
        if (group)
            group->SetValue(B_CONTROL_ON);
    SetDescription();
    EstimateTime();
}

int32 TarvexWin::CountSelected()
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return 0;
    const RunEstimate estimate = Estimate();
    return static_cast<int32>(
        std::count(std::begin(estimate.selected), std::end(estimate.selected), true));
}

bool TarvexWin::IsSelected(size_t group) const
{
    return groups[group] && groups[group]->Value() == B_CONTROL_ON;
}

void TarvexWin::EstimateTime()
{
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    if (!running)
        statusText->SetText(Estimate().Text());
}

RunEstimate TarvexWin::Estimate() const
{
    RunEstimate estimate;
    estimate.nbrCpus = NbrCpus();
    for (size_t group = 0; group < kNbrTestGroups; group++)
        estimate.selected[group] = IsSelected(group);
    return estimate;
}

void TarvexWin::SetDescription()
{
    testItem->SetEnabled(!running && CountSelected() > 0);
}

void TarvexWin::StartTest()
{
    if (!PrepareTest())
        return;
    const status_t status = benchmark.Go("benchmark", new BMessenger(this), kRunPriority, false);
    if (status >= B_OK)
        return;
    const BAutolock lock(this);
    if (!lock.IsLocked())
        return;
    fprintf(stderr, "Cannot start thread <benchmark>: error %d\n", status);
    EndRun();
    LibError(
        "The test could not be started: the system has no room for another thread. Close other "
        "programs, then try again.");
}

// False where there is to be no run. Else window and benchmark are ready for it.
bool TarvexWin::PrepareTest()
{
    const LibSysInfo info;
    const BAutolock lock(this);
    if (!lock.IsLocked() || running)
        return false;
    // Asked first: who aborts here has not taken the machine from anybody.
    if (IsSelected(GroupIndex("graphics")) && !ScreenIsAccepted(info))
        return false;
    if (!MachineIsHad())
        return false;
    WarnOnce();
    running = true;
    SetDescription();
    watch.Begin();
    awake = std::make_unique<BSleepInhibitor>("A run of Tarvex");
    progress.Begin(Estimate(), system_time());
    ShowProgress();
    progressBar->Show();
    cursor.Run(kCursorPeriod);
    for (size_t group = 0; group < kNbrTestGroups; group++)
        benchmark.*kGroupRuns[group].selected = IsSelected(group);
    statusBox->SetLabel(kStatusLabel);
    return true;
}

bool TarvexWin::ScreenIsAccepted(const LibSysInfo& info)
{
    if (SuitsGraphicsTests(info))
        return true;
    BAlert* alert = new BAlert("Graphics",
        "To properly test the graphics portion, the screen should be set to 8 Bits/Pixel, and a "
        "resolution of 1024x768",
        "Abort", "Continue", nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
    alert->SetShortcut(0, B_ESCAPE);
    constexpr int32 kContinue = 1;
    return LibAnswer(alert) == kContinue;
}

// The machine is one run's alone, or the user wants a second one.
bool TarvexWin::MachineIsHad()
{
    if (machineRun.Begin() != B_BUSY)
        return true;
    const std::string text = "Another run is under way on this machine, by " + machineRun.Holder()
        + ". Two at once spoil each other's rates.";
    BAlert* alert = new BAlert("Another run", text.c_str(), "Start anyway", "Cancel", nullptr,
        B_WIDTH_AS_USUAL, B_WARNING_ALERT);
    alert->SetShortcut(1, B_ESCAPE);
    constexpr int32 kStart = 0;
    return LibAnswer(alert) == kStart;
}

void TarvexWin::WarnOnce()
{
    if (warned)
        return;
    LibWarning("While the test is being conducted against one CPU, Tarvex may appear to have hung "
               "and the animated pointer will not spin much. Be patient for a moment, the single "
               "processor is very busy during this phase of the test.");
    warned = true;
}

void TarvexWin::StatusChange(BMessage* message)
{
    const char* status = nullptr;
    if (message->FindString("status", &status) != B_OK)
        return;
    statusText->SetText(status);
    progress.GroupBegins(system_time());
    ShowProgress();
}

// Only when a group begins: whatever moved in between would be measured too.
void TarvexWin::ShowProgress()
{
    LibString left = MinutesText(static_cast<int32>(std::ceil(progress.SecondsLeft())));
    left.Concat(" left");
    progressBar->SetToolTip(left);
    progressBar->Update(static_cast<float>(progress.Share()) - progressBar->CurrentValue());
}

void TarvexWin::EndRun()
{
    cursor.Quit();
    machineRun.End();
    awake.reset();
    progressBar->Hide();
    running = false;
    statusBox->SetLabel(kEstimateLabel);
    statusText->SetText("");
    SetDescription();
}

void TarvexWin::BenchmarkChange(BMessage*)
{
    // The thread writes no more once it has told of its end, so the results may be copied.
    EndRun();
    const RunRemark remark = watch.End();
    MakeResults(NbrCpus());
    results.With([&](ResultsWin& window) {
        window.Update(benchmark.results, allowSaveComparison);
        window.KeepUnsaved();
        window.Say(remark.line, remark.more);
    });
    // Before the window takes the keyboard.
    NotifyAbsentUser("The test has ended", remark.line);
    unsavedCpus = 0; // this run has taken its place
    resultsItem->SetEnabled(true);
    // Only when it is filled, else the run before would be seen for a moment.
    results.Front();
}

void TarvexWin::ShowResults()
{
    if (unsavedCpus > 0) {
        MakeResults(unsavedCpus);
        results.With([this](ResultsWin& window) { window.ShowUnsaved(allowSaveComparison); });
        unsavedCpus = 0;
    }
    results.Front();
}

void TarvexWin::CompareFiles(BMessage* files)
{
    MakeResults(titledCpus > 0 ? titledCpus : NbrCpus());
    results.With([&](ResultsWin& window) { window.CompareFiles(files, allowSaveComparison); });
}

void TarvexWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
        case B_REFS_RECEIVED: CompareFiles(message); break;
        case kMsgTest: StartTest(); break;
        case kMsgAll: SelectAll(); break;
        case kMsgResults: ShowResults(); break;
        case 'BmkS': StatusChange(message); break;
        case 'LThC': BenchmarkChange(message); break;
        default:
            if (!IsOfCheckBox(*message)) {
                LibWindow::MessageReceived(message);
                break;
            }
            SetDescription();
            EstimateTime();
            break;
    }
}

bool TarvexWin::QuitRequested()
{
    results.End();
    return LibWindow::QuitRequested();
}
