#include "ui/CompareView.h"

#include "foundation/LibString.h"
#include "toolkit/LibColorChooser.h"

#include <Window.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr float kFontSize = 10;
constexpr float kEntryWidth = 66;
constexpr float kEntryGap = 10;
constexpr float kSwatch = 14;

} // namespace

rgb_color cpu_color[kNbrCpuColors];

void ResetCpuColors()
{
    constexpr rgb_color kColors[kNbrCpuColors] = {
        { 0, 0, 200, 0 },
        { 0, 178, 0, 0 },
        { 203, 102, 255, 0 },
        { 51, 203, 152, 0 },
        { 102, 203, 255, 0 },
        { 228, 0, 0, 0 },
        { 255, 152, 0, 0 },
        { 0, 255, 0, 0 },
    };
    std::copy(std::begin(kColors), std::end(kColors), cpu_color);
}

CompareView::CompareView(BRect frame)
    : BView(frame, "legend", B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE)
{
    ResetCpuColors();
    SetFontSize(kFontSize);
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}

CompareView::~CompareView() = default;

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
        if (!IsFocus() || i != cursor)
            continue;
        StrokeLine(frame.LeftBottom(), BPoint(frame.right - kEntryGap, frame.bottom));
        // Beyond the edge, where nobody sees it: for a screen reader.
        DrawString(text, BPoint(Bounds().right + 1, swatch.bottom - 3));
    }
}

void CompareView::MouseDown(BPoint where)
{
    if (where.x >= 0 && where.x < kEntryWidth * float(kNbrCpuColors))
        Choose(int32(where.x / kEntryWidth));
}

void CompareView::KeyDown(const char* bytes, int32 numBytes)
{
    switch (bytes[0]) {
        case B_LEFT_ARROW: MoveCursor(-1); break;
        case B_RIGHT_ARROW: MoveCursor(1); break;
        case B_SPACE:
        case B_ENTER: Choose(cursor); break;
        default: BView::KeyDown(bytes, numBytes); break;
    }
}

void CompareView::MakeFocus(bool focus)
{
    BView::MakeFocus(focus);
    Invalidate();
}

void CompareView::MoveCursor(int32 step)
{
    cursor = std::clamp(cursor + step, int32(0), kNbrCpuColors - 1);
    Invalidate();
}

void CompareView::Choose(int32 index)
{
    chooser.End(); // it is for one colour
    cursor = index;
    chooser.Show([this, index] {
        LibString title;
        title.Formatted("Color of %d CPU", index + 1);
        auto* window = new LibColorChooser(Window(), title, cpu_color[index]);
        window->SetPosition(kCentred);
        return window;
    });
    chosen = index;
}

void CompareView::CloseChooser()
{
    chooser.End();
}

void CompareView::ChooserClosed(const BMessage& closing)
{
    if (!chooser.IsFrom(closing))
        return;
    chooser.With([this](LibColorChooser& window) { cpu_color[chosen] = window.Color(); });
    CloseChooser();
    Invalidate();
}
