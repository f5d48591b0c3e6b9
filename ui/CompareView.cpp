#include "ui/CompareView.h"

#include "foundation/LibString.h"
#include "toolkit/LibColorChooser.h"
#include "ui/CpuColor.h"

#include <Window.h>

namespace {

constexpr float kFontSize = 10;
constexpr float kEntryWidth = 66;
constexpr float kSwatch = 14;

} // namespace

CompareView::CompareView(BRect frame)
    : BView(frame, "legend", B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW)
{
    ResetCpuColors();
    SetFontSize(kFontSize);
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}

BRect CompareView::FrameOf(int32 index) const
{
    const float left = float(index) * kEntryWidth;
    return BRect(left, 0, left + kEntryWidth - 1, Bounds().bottom);
}

void CompareView::Draw(BRect)
{
    for (int32 i = 0; i < kNbrCpuColors; i++) {
        const BRect frame = FrameOf(i);
        const BRect swatch(frame.left, 2, frame.left + kSwatch, 2 + kSwatch);
        SetHighColor(cpu_color[i]);
        FillRect(swatch);
        SetHighColor(ui_color(B_PANEL_TEXT_COLOR));
        StrokeRect(swatch);
        LibString text;
        text.Formatted("%d CPU", i + 1);
        DrawString(text, BPoint(swatch.right + 5, swatch.bottom - 3));
    }
}

void CompareView::MouseDown(BPoint where)
{
    if (where.x < 0 || where.x >= kEntryWidth * float(kNbrCpuColors))
        return;
    CloseChooser();
    chosen = int32(where.x / kEntryWidth);
    LibString title;
    title.Formatted("Color of %d CPU", chosen + 1);
    chooser = new LibColorChooser(Window(), title, cpu_color[chosen]);
    chooser->SetPosition(kCentred);
    chooser->Show();
}

void CompareView::CloseChooser()
{
    if (chooser && chooser->Lock())
        chooser->Quit();
    chooser = nullptr;
    chosen = -1;
}

void CompareView::ChooserClosed()
{
    if (chooser && chosen >= 0 && chooser->Lock()) {
        cpu_color[chosen] = chooser->Color();
        chooser->Unlock();
    }
    CloseChooser();
    Invalidate();
}
