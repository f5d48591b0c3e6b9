#include "toolkit/DialogWindow.h"

#include "toolkit/ButtonRow.h"

#include <Button.h>
#include <View.h>

#include <algorithm>

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
