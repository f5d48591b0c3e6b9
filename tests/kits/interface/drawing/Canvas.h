// A shown window with one view to draw on, and what the screen then shows of it.
#pragma once

#include "tests/kits/interface/TestWindow.h"

#include <atomic>
#include <functional>
#include <vector>

// Pixels as 0xrrggbb, top row first.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32> pixels;

    uint32 At(int x, int y) const { return pixels[y * width + x]; }
    // The pixels of a colour: how many, and the rectangle around them.
    struct Extent {
        int count = 0;
        BRect rect;
    };
    Extent ExtentOf(uint32 color) const;
};

constexpr uint32 kWhite = 0xffffff;
constexpr uint32 kBlack = 0;

using PixelRule = std::function<uint32(int, int)>;

// Fails with a map of both where a pixel is not what rule says.
void ExpectPicture(const Picture& shown, const PixelRule& rule);

// The rectangle of the screen.
Picture ScreenPicture(BRect rect);

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
    static constexpr int kWidth = 40;
    static constexpr int kHeight = 30;

    void SetUp() override;

    // Clears the view to white, resets what it draws with, calls draw and returns what the screen
    // shows. The window is locked meanwhile, so nothing else is drawn.
    Picture Drawn(const std::function<void(BView& view)>& draw);
    Picture Shown(); // of the view, now; with the window locked
    // Whether the whole view comes to show what is drawn in that colour.
    bool ComesToShow(rgb_color color);

    CanvasView* fView = nullptr;
};
