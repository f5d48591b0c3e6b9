#include "toolkit/LibColorChooser.h"

#include "foundation/LibString.h"

#include <Looper.h>
#include <Message.h>
#include <View.h>

#include <algorithm>

namespace {

// Together 216, the third power of the six steps.
constexpr int32 kColumns = 18;
constexpr int32 kRows = 12;
constexpr float kSwatch = 18;

// The colours of a screen of 256 colours that all screens share: six steps of red, green and blue.
// A block of 6 by 6 for each red, so that neighbours are alike.
rgb_color SwatchColor(int32 index)
{
    constexpr int32 kSteps = 6;
    // Five steps lead from 0 to 255.
    constexpr int32 kStep = 51;
    const int32 column = index % kColumns;
    const int32 row = index / kColumns;
    const int32 red = column / kSteps + row / kSteps * 3;
    return { static_cast<uint8>(red * kStep), static_cast<uint8>(row % kSteps * kStep),
        static_cast<uint8>(column % kSteps * kStep), 255 };
}

int32 Distance(rgb_color a, rgb_color b)
{
    return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
}

int32 NearestSwatch(rgb_color color)
{
    int32 nearest = 0;
    for (int32 i = 1; i < kColumns * kRows; i++) {
        if (Distance(SwatchColor(i), color) < Distance(SwatchColor(nearest), color))
            nearest = i;
    }
    return nearest;
}

class SwatchView : public BView {
public:
    SwatchView(LibColorChooser* chooser, rgb_color color)
        : BView(BRect(0, 0, kColumns * kSwatch - 1, kRows * kSwatch - 1), "swatches",
            B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_NAVIGABLE),
          owner(chooser), cursor(NearestSwatch(color))
    {
    }

    void Draw(BRect) override
    {
        for (int32 i = 0; i < kColumns * kRows; i++) {
            SetHighColor(SwatchColor(i));
            FillRect(FrameOf(i));
        }
        // Black and white, one inside the other: whatever the swatch, one of them is seen.
        SetHighColor(black_color);
        StrokeRect(FrameOf(cursor));
        SetHighColor(white_color);
        StrokeRect(FrameOf(cursor).InsetByCopy(1, 1));
        // Beyond the edge, where nobody sees it: for a screen reader.
        const rgb_color color = SwatchColor(cursor);
        LibString text;
        text.Formatted("Red %d, green %d, blue %d", color.red, color.green, color.blue);
        DrawString(text, BPoint(0, Bounds().bottom + kSwatch));
    }

    void MouseDown(BPoint where) override
    {
        const int32 column = std::clamp(static_cast<int32>(where.x / kSwatch), 0, kColumns - 1);
        const int32 row = std::clamp(static_cast<int32>(where.y / kSwatch), 0, kRows - 1);
        owner->Pick(SwatchColor(row * kColumns + column));
    }

    void KeyDown(const char* bytes, int32) override
    {
        switch (bytes[0]) {
            case B_LEFT_ARROW: MoveCursor(-1); break;
            case B_RIGHT_ARROW: MoveCursor(1); break;
            case B_UP_ARROW: MoveCursor(-kColumns); break;
            case B_DOWN_ARROW: MoveCursor(kColumns); break;
            case B_ENTER: owner->Pick(SwatchColor(cursor)); break;
        }
    }

private:
    static BRect FrameOf(int32 index)
    {
        const float left = static_cast<float>(index % kColumns) * kSwatch;
        const int32 row = index / kColumns;
        const float top = static_cast<float>(row) * kSwatch;
        return BRect(left, top, left + kSwatch - 1, top + kSwatch - 1);
    }

    void MoveCursor(int32 step)
    {
        const int32 moved = cursor + step;
        if (moved < 0 || moved >= kColumns * kRows)
            return;
        cursor = moved;
        Invalidate();
    }

    LibColorChooser* owner;
    int32 cursor; // the swatch that Enter picks
};

} // namespace

LibColorChooser::LibColorChooser(BLooper* looper, const char* title, rgb_color color)
    : LibWindow(BRect(0, 0, kColumns * kSwatch - 1, kRows * kSwatch - 1), title,
        B_FLOATING_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_ZOOMABLE),
      target(looper), picked(color)
{
    SetName("LibColorChooser");
    CloseOnEscape();
    SwatchView* swatches = new SwatchView(this, color);
    AddChild(swatches);
    swatches->MakeFocus();
}

void LibColorChooser::Pick(rgb_color color)
{
    picked = color;
    // As the close box does, so that the target is told in one way.
    PostMessage(B_QUIT_REQUESTED);
}

bool LibColorChooser::QuitRequested()
{
    // Not gone yet: the target still asks for the colour.
    // By a message, as the target opened this window: its lock comes before this one.
    target->PostMessage('ColC', nullptr, this);
    return false;
}
