#include "ui/CompareWin.h"

#include "toolkit/LibMenuButton.h"
#include "ui/CompareResultsView.h"
#include "ui/CompareView.h"

#include <Button.h>
#include <CheckBox.h>
#include <Message.h>
#include <ScrollBar.h>
#include <ScrollView.h>

#include <algorithm>

namespace {

constexpr uint32 kMsgSave = 1001;
constexpr uint32 kMsgRatio = 1002;

constexpr float kMargin = 10;
constexpr float kLegendHeight = 20;
constexpr float kControlsTop = 38;
constexpr float kControlHeight = 26;
constexpr float kSaveWidth = 80;
constexpr float kChartTop = kControlsTop + kControlHeight + 8;

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
    ReadFromResource();
}

// The results window quits this one unasked when the program ends.
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
    chart = new CompareResultsView(frame.InsetByCopy(kBorder, kBorder), this);
    scroller = new BScrollView("scroll_view", chart, B_FOLLOW_ALL_SIDES, 0, false, true);
    ChildAt(0)->AddChild(scroller);
    chart->MakeFocus();
}

void CompareWin::UpdateScrollBars()
{
    BScrollBar* bar = scroller->ScrollBar(B_VERTICAL);
    const float visible = chart->Bounds().Height();
    const float height = chart->ChartHeight();
    bar->SetRange(0, std::max(0.0f, height - visible));
    bar->SetProportion(visible / std::max(height, 1.0f));
    bar->SetSteps(17, std::max(17.0f, visible - 17));
}

void CompareWin::RatioChanged()
{
    chart->CompareByRatio(ratio->Value() == B_CONTROL_ON);
    chart->Redraw();
}

void CompareWin::ChooserClosed()
{
    legend->ChooserClosed();
    chart->Invalidate();
}

void CompareWin::MessageReceived(BMessage* message)
{
    if (message->WasDropped()) {
        LoadResults(message);
        return;
    }
    switch (message->what) {
        case kMsgTest: TestItemSelected(); break;
        case kMsgSave: SaveComparison(); break;
        case kMsgRatio: RatioChanged(); break;
        case 'ColC': ChooserClosed(); break;
        default: LibWindow::MessageReceived(message); break;
    }
}

bool CompareWin::QuitRequested()
{
    legend->CloseChooser();
    target->PostMessage('cmpq');
    return false;
}
