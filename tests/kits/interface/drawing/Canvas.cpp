#include "Canvas.h"

#include "OS.h"

namespace {

std::string Map(const Picture& picture, const PixelRule& color)
{
    std::string map;
    for (int y = 0; y < picture.height; y++) {
        for (int x = 0; x < picture.width; x++)
            map += color(x, y) == kWhite ? '.' : color(x, y) == kBlack ? '#' : 'o';
        map += '\n';
    }
    return map;
}

} // namespace

Picture::Extent Picture::ExtentOf(uint32 color) const
{
    Extent extent;
    for (int i = 0; i < width * height; i++) {
        if (pixels[i] != color)
            continue;
        const BRect pixel(i % width, i / width, i % width, i / width);
        extent.rect = extent.count++ == 0 ? pixel : extent.rect | pixel;
    }
    return extent;
}

void ExpectPicture(const Picture& shown, const PixelRule& rule)
{
    ASSERT_GT(shown.width, 0);
    for (int y = 0; y < shown.height; y++) {
        for (int x = 0; x < shown.width; x++) {
            if (shown.At(x, y) == rule(x, y))
                continue;
            FAIL() << "at (" << x << ", " << y << "): " << std::hex << shown.At(x, y) << " not "
                   << rule(x, y) << "\nshown:\n"
                   << Map(shown, [&](int px, int py) { return shown.At(px, py); }) << "expected:\n"
                   << Map(shown, rule);
        }
    }
}

Picture ScreenPicture(BRect rect)
{
    return { rect.IntegerWidth() + 1, rect.IntegerHeight() + 1, screen::PixelsIn(rect) };
}

void CanvasView::Draw(BRect updateRect)
{
    draws++;
    if (onDraw)
        onDraw(updateRect);
}

void CanvasTest::SetUp()
{
    WindowTest::SetUp();
    fView =
        new CanvasView(BRect(3, 6, 2 + kWidth, 5 + kHeight), "canvas", B_FOLLOW_NONE, B_WILL_DRAW);
    BView* outer = new BView(BRect(7, 4, 199, 99), "outer", B_FOLLOW_NONE, 0);
    outer->AddChild(fView);
    fWindow->AddChild(outer);
    fWindow->Show();
    ASSERT_TRUE(ComesToShow({ 255, 0, 255 }));
    // The screen may yet ask for the new window to be drawn.
    for (int before = -1; before != fView->draws; snooze(50'000))
        before = fView->draws;
}

bool CanvasTest::ComesToShow(rgb_color color)
{
    const uint32 number = color.red << 16 | color.green << 8 | color.blue;
    return Becomes([&] {
        fView->SetHighColor(color);
        fView->FillRect(fView->Bounds());
        fView->Sync();
        return Shown().ExtentOf(number).count == kWidth * kHeight;
    });
}

Picture CanvasTest::Drawn(const std::function<void(BView& view)>& draw)
{
    return Locked([&] {
        fView->ScrollTo(B_ORIGIN);
        fView->SetDrawingMode(B_OP_COPY);
        fView->SetPenSize(1);
        fView->SetLowColor(white_color);
        fView->SetFont(be_plain_font);
        fView->SetHighColor(white_color);
        fView->FillRect(fView->Bounds());
        fView->SetHighColor(black_color);
        draw(*fView);
        fView->Sync();
        return Shown();
    });
}

Picture CanvasTest::Shown()
{
    const BRect bounds = fView->Bounds();
    return ScreenPicture(fView->ConvertToScreen(bounds));
}
