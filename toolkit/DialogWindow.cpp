#include "toolkit/DialogWindow.h"

#include "toolkit/StatusLine.h"

#include <Button.h>
#include <Font.h>
#include <Message.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kMargin = 10;
constexpr float kGap = 10;
constexpr float kSmallestWidth = 75;
constexpr float kLabelMargins = 30;
constexpr float kButtonHeight = 26;
constexpr float kStatusWidth = 290; // some fifty letters

} // namespace

ButtonRow::ButtonRow() : BView(BRect(), "buttons", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM, 0)
{
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}

BButton* ButtonRow::AddButton(const char* name, const char* label, uint32 what)
{
    BButton* button =
        new BButton(BRect(), name, label, new BMessage(what), B_FOLLOW_RIGHT | B_FOLLOW_TOP);
    AddChild(button);
    buttons.push_back(button);
    const float labelWidth = std::ceil(be_plain_font->StringWidth(label));
    buttonWidth = std::max({ buttonWidth, kSmallestWidth, labelWidth + kLabelMargins });
    return button;
}

StatusLine* ButtonRow::AddStatus(const char* name)
{
    status = new StatusLine(BRect(), name, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
    AddChild(status);
    return status;
}

void ButtonRow::Arrange(BRect frame)
{
    MoveTo(frame.LeftTop());
    ResizeTo(frame.Width(), frame.Height());
    // From the right, where the default button stands in every dialog; the row's left may stay
    // empty.
    float right = frame.Width() - kMargin;
    const float top = std::floor((frame.Height() - kButtonHeight) / 2);
    for (auto button = buttons.rbegin(); button != buttons.rend(); ++button) {
        (*button)->MoveTo(right - buttonWidth, top);
        (*button)->ResizeTo(buttonWidth, kButtonHeight);
        right -= buttonWidth + kGap;
    }
    if (!status)
        return;
    status->MoveTo(kMargin, top);
    status->ResizeTo(right - kMargin, kButtonHeight);
}

float ButtonRow::RowHeight() const
{
    return kButtonHeight + 2 * kMargin;
}

float ButtonRow::RowWidth() const
{
    const float text = status ? kStatusWidth + kGap : 0;
    return text + static_cast<float>(buttons.size()) * (buttonWidth + kGap) - kGap + 2 * kMargin;
}

DialogWindow::DialogWindow(BRect frame, const char* name, const char* title, uint32 flags)
    : LibWindow(frame, title, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, flags),
      background(new BView(Bounds(), "bgview", B_FOLLOW_ALL_SIDES, 0))
{
    SetName(name);
    CloseOnEscape();
    background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(background);
}

void DialogWindow::SetDefaultRow(ButtonRow* row)
{
    // Before Bounds() is asked: row and background become as wide as the window is then.
    ResizeTo(std::max(Bounds().Width(), row->RowWidth()), Bounds().Height());
    BRect frame = Bounds();
    frame.top = frame.bottom - row->RowHeight();
    background->ResizeTo(Bounds().Width(), frame.top - 1);
    AddChild(row);
    row->Arrange(frame);
    SetDefaultButton(row->LastButton());
    // Else the first button would have the keyboard, and Enter would press that.
    if (row->LastButton())
        row->LastButton()->MakeFocus();
}
