// A shown window with one view to draw on, and what the screen then shows of it.
#pragma once

#include "OS.h"
#include "tests/kits/interface/TestWindow.h"

// A letter for each pixel (0xrrggbb), a line for each row: '.' white, '#' black, 'r' red, 'b' blue,
// 'm' magenta, 'g' grey (131), 't' the transparent colour, 's' a sky blue (0x10c3ff), 'S' what it
// becomes inverted, '+' others.
inline std::string Letters(const std::vector<uint32>& pixels, int width)
{
    // Without the bits that a display of 16 bits does not have.
    static const std::map<uint32, char> sLetters = { { 0xf8f8f8, '.' }, { 0, '#' },
        { 0xf80000, 'r' }, { 0x0000f8, 'b' }, { 0xf800f8, 'm' }, { 0x808080, 'g' },
        { 0x707070, 't' }, { 0x10c0f8, 's' }, { 0xe83800, 'S' } };
    std::string letters;
    for (size_t i = 0; i < pixels.size(); i++) {
        const auto found = sLetters.find(pixels[i] & 0xf8f8f8);
        letters += found == sLetters.end() ? '+' : found->second;
        letters += (i + 1) % width == 0 ? "\n" : "";
    }
    return letters;
}
// A picture of that letter alone.
inline std::string All(char letter, int width = 40, int height = 30)
{
    std::string letters;
    while (height-- > 0)
        letters += std::string(width, letter) + '\n';
    return letters;
}
// The picture that pictures.txt has under a title.
inline std::string Expected(const std::string& title)
{
    const std::string all = ReadFile(TARVEX_TESTS "/kits/interface/drawing/pictures.txt");
    const size_t begin = all.find(title + ":\n");
    const size_t end = all.find("\n\n", begin);
    return begin == all.npos ? "none" : all.substr(begin, end + 1 - begin).substr(title.size() + 2);
}

class CanvasView : public BView {
public:
    using BView::BView;
    void Draw(BRect updateRect) override
    {
        draws++;
        if (onDraw)
            onDraw(updateRect);
    }

    std::function<void(BRect)> onDraw;
    std::atomic<int> draws = 0;
};

// The view "canvas" is 40 pixels wide and 30 high, white, and fully visible when the test begins.
class CanvasTest : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        fView = new CanvasView(BRect(3, 6, 42, 35), "canvas", B_FOLLOW_NONE, B_WILL_DRAW);
        BView* outer = new BView(BRect(7, 4, 199, 99), "outer", B_FOLLOW_NONE, 0);
        outer->AddChild(fView);
        fWindow->AddChild(outer);
        fWindow->Show();
        ASSERT_TRUE(ComesToShow());
        // The screen may yet ask for the new window to be drawn.
        for (int before = -1; before != fView->draws; snooze(50'000))
            before = fView->draws;
    }

    // Clears the view to white, resets what it draws with, calls draw and returns what the screen
    // shows. The window is locked meanwhile, so nothing else is drawn.
    std::string Drawn(const std::function<void(BView& view)>& draw)
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
    // Of the view, now; with the window locked.
    std::string Shown()
    {
        const BRect bounds = fView->Bounds();
        return Letters(screen::PixelsIn(fView->ConvertToScreen(bounds)), bounds.IntegerWidth() + 1);
    }
    // Whether the whole view comes to show what is drawn in magenta.
    bool ComesToShow()
    {
        return Becomes([&] {
            fView->SetHighColor({ 255, 0, 255 });
            fView->FillRect(fView->Bounds());
            fView->Sync();
            return Shown() == All('m');
        });
    }

    CanvasView* fView = nullptr;
};
