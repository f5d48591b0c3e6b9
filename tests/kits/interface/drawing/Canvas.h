// A shown window with one view to draw on, and what the screen then shows of it.
#pragma once

#include "tests/kits/interface/TestWindow.h"

// A letter for each pixel (0xrrggbb), a line for each row: '.' white, '#' black, 'r' red, 'b' blue,
// 'm' magenta, 'g' grey (131), 't' the transparent colour, 's' a sky blue (0x0ac8ff), 'S' what it
// becomes inverted, '+' others.
std::string Letters(const std::vector<uint32>& pixels, int width);
// A picture of that letter alone.
std::string All(char letter, int width = 40, int height = 30);
// The picture that pictures.txt has under a title.
std::string Expected(const std::string& title);

class CanvasView : public BView {
public:
    using BView::BView;
    void Draw(BRect updateRect) override;

    std::function<void(BRect)> onDraw;
    std::atomic<int> draws = 0;
};

// The view "canvas" is 40 pixels wide and 30 high, white, and fully visible when the test begins.
class CanvasTest : public WindowTest {
protected:
    void SetUp() override;

    // Clears the view to white, resets what it draws with, calls draw and returns what the screen
    // shows. The window is locked meanwhile, so nothing else is drawn.
    std::string Drawn(const std::function<void(BView& view)>& draw);
    std::string Shown(); // of the view, now; with the window locked
    // Whether the whole view comes to show what is drawn in magenta.
    bool ComesToShow();

    CanvasView* fView = nullptr;
};
