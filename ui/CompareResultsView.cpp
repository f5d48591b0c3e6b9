#include "ui/CompareResultsView.h"

#include "results/ChartText.h"
#include "results/ComparisonChart.h"
#include "toolkit/LibWindow.h"

#include <Message.h>
#include <PopUpMenu.h>
#include <ScrollBar.h>
#include <Window.h>

#include <algorithm>

namespace {

constexpr float kRowHeight = ComparisonChart::kRowHeight;
constexpr rgb_color kFocusColor = { 0, 0, 229, 255 }; // the ground is white on every desktop
constexpr float kCaptionX = 100;
constexpr float kCaptionBottom = 14;

// Of the item that is marked in the menu "Order".
const struct {
    const char* label;
    ChartOrder order;
} kOrders[] = {
    { "As added", ChartOrder::kAsAdded },
    { "By rate", ChartOrder::kByRate },
    { "By name", ChartOrder::kByName },
};

} // namespace

CompareResultsView::CompareResultsView(BRect frame, Comparison& shown)
    : BView(frame, "DrawView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      comparison(shown)
{
    SetViewColor(white_color);
    SetFontSize(ComparisonChart::kFontSize);
}

CompareResultsView::~CompareResultsView() = default;

void CompareResultsView::AttachedToWindow()
{
    AddMenu();
    menu->Join(Window()); // so that its shortcuts work before it was ever opened
}

void CompareResultsView::DetachedFromWindow()
{
    menu->Leave();
}

void CompareResultsView::AddMenu()
{
    menu = std::make_unique<BPopUpMenu>("chart menu", false, false);
    const auto add = [this](const char* label, uint32 what, char shortcut = 0) {
        auto* item = new BMenuItem(label, new BMessage(what), shortcut);
        menu->AddItem(item);
        return item;
    };
    copyItem = add("Copy", kMsgCopy, 'C');
    pictureItem = add("Save picture...", kMsgSavePicture);
    menu->AddItem(new BSeparatorItem);
    auto* orders = new BMenu("Order");
    orders->SetRadioMode(true);
    for (const auto& [label, order] : kOrders) {
        auto* message = new BMessage(kMsgOrder);
        message->AddInt32("order", static_cast<int32>(order));
        orders->AddItem(new BMenuItem(label, message));
        orders->ItemAt(orders->CountItems() - 1)->SetMarked(order == comparison.order);
    }
    menu->AddItem(orders);
    menu->AddItem(new BSeparatorItem);
    forgetItem = add("Forget this machine", kMsgForget);
    forgetOthersItem = add("Forget all others", kMsgForgetOthers);
    restoreItem = add("Undo forgetting", kMsgRestore, 'Z');
}

void CompareResultsView::OpenMenu(BPoint where)
{
    const Results* first = comparison.machines.First();
    const bool isShown = first && first->Current();
    copyItem->SetEnabled(isShown);
    pictureItem->SetEnabled(isShown);
    forgetItem->SetEnabled(comparison.selected && !comparison.selected->current);
    forgetOthersItem->SetEnabled(comparison.selected && comparison.machines.Size() > 1);
    restoreItem->SetEnabled(comparison.CanRestore());
    menu->Open(ConvertToScreen(where));
}

void CompareResultsView::CompareByRatio(const bool& ratio)
{
    comparison.byRatio = ratio;
    UpdateMaxScale();
}

void CompareResultsView::Save()
{
    Window()->PostMessage(kMsgSave);
}

void CompareResultsView::Redraw()
{
    const float visible = Bounds().Height();
    const float height = ChartHeight();
    if (BScrollBar* bar = ScrollBar(B_VERTICAL)) {
        bar->SetRange(0, height - visible);
        bar->SetProportion(visible / std::max(height, 1.0f));
        bar->SetSteps(kRowHeight, visible - kRowHeight);
    }
    restoreItem->SetEnabled(comparison.CanRestore()); // its shortcut is for the window otherwise
    Invalidate();
}

// The height of all rows, at least the view's own.
float CompareResultsView::ChartHeight() const
{
    return std::max(ComparisonChart(comparison).Height(), Bounds().Height());
}

void CompareResultsView::Draw(BRect update)
{
    ComparisonChart(comparison).Draw(this, update);
    if (!comparison.selected)
        return;
    if (HasKeyboard())
        DrawFocus();
    LibString text("Selected: "); // beyond the edge, where nobody sees it: for a screen reader
    text.Concat(comparison.selected->description);
    DrawString(text, BPoint(Bounds().right + 1, 0));
}

// Around the row that the keys are for.
void CompareResultsView::DrawFocus()
{
    const Results& machine = *comparison.selected;
    SetHighColor(kFocusColor);
    StrokeRect(BRect(
        0, machine.frame.top - 1, Bounds().right, machine.frame.top + machine.RowHeight() - 2));
}

void CompareResultsView::MakeFocus(bool focus)
{
    BView::MakeFocus(focus);
    Invalidate();
}

void CompareResultsView::WindowActivated(bool)
{
    Invalidate();
}

void CompareResultsView::MouseDown(BPoint where)
{
    // The arrow keys go on from what was clicked.
    MakeFocus();
    int32 buttons = 0;
    if (const BMessage* click = Window()->CurrentMessage())
        click->FindInt32("buttons", &buttons);
    if (buttons == B_SECONDARY_MOUSE_BUTTON) {
        Select(comparison.MachineAt(where.y));
        return OpenMenu(where);
    }
    // A hit at a picture folds its row out or in, so the chart has another height.
    if (Open(comparison.MachineAt(where.y), where))
        return;
    Select(comparison.MachineAt(
        where.y)); // beside the picture: percents refer to this machine from now on
}

// True if where lies in the machine's picture: its row is folded out or in then.
bool CompareResultsView::Open(Results* machine, BPoint where)
{
    if (!machine || !machine->Contains(where))
        return false;
    comparison.RowsChanged();
    Redraw();
    return true;
}

void CompareResultsView::MouseMoved(BPoint where, uint32, const BMessage*)
{
    if (shownTip != ToolTip()) // it was set anew by who sets all tips
        usualTip = ToolTip();
    const std::string tip = TipAt(where);
    if (tip == ToolTip())
        return;
    shownTip = tip;
    SetToolTip(tip.c_str());
}

std::string CompareResultsView::TipAt(BPoint where)
{
    const Results* first = comparison.machines.First();
    const bool isCaption =
        where.y <= kCaptionBottom && where.x >= kCaptionX && where.x < ComparisonChart::kBarsX;
    if (isCaption && first && first->Current())
        return UnitAsText(*first->Current());
    const Results* machine = comparison.MachineAt(where.y);
    return machine ? MachineAsText(comparison, *machine) : usualTip;
}

void CompareResultsView::Select(Results* machine)
{
    if (!machine)
        return;
    comparison.selected = machine;
    // Percents refer to this machine, so the scale changes with it.
    UpdateMaxScale();
    Redraw();
}

void CompareResultsView::KeyDown(const char* bytes, int32 numBytes)
{
    const float page = Bounds().Height() - kRowHeight; // the window is higher than some rows
    switch (bytes[0]) {
        case 'S':
        case 's': Save(); break;
        case B_LEFT_ARROW: Select(comparison.NextToSelected(false)); break;
        case B_RIGHT_ARROW: Select(comparison.NextToSelected(true)); break;
        case B_ENTER:
            // As a click at the picture does.
            if (comparison.selected)
                Open(comparison.selected, comparison.selected->frame.LeftTop());
            break;
        case B_DELETE: Window()->PostMessage(kMsgForget); break;
        case B_FUNCTION_KEY:
            if (LibIsShiftedKey(Window()->CurrentMessage(), B_F10_KEY)) {
                const Results* machine = comparison.selected;
                OpenMenu(machine ? machine->frame.LeftBottom() : LeftTop());
            }
            break;
        case B_UP_ARROW: Scroll(-kRowHeight); break;
        case B_DOWN_ARROW: Scroll(kRowHeight); break;
        case B_PAGE_UP: Scroll(-page); break;
        case B_PAGE_DOWN: Scroll(page); break;
        // The chart's height is further than there is room for: the bar stops at its ends.
        case B_HOME: Scroll(-ChartHeight()); break;
        case B_END: Scroll(ChartHeight()); break;
        default: BView::KeyDown(bytes, numBytes); break;
    }
}

void CompareResultsView::Scroll(float distance)
{
    if (BScrollBar* bar = ScrollBar(B_VERTICAL))
        bar->SetValue(bar->Value() + distance);
}

void CompareResultsView::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    Redraw();
}
