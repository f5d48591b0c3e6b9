// Draw(): what it draws appears at once when it ends, and only where an update was asked for.
#include "Bitmap.h"
#include "Canvas.h"

namespace {

class UpdateTest : public CanvasTest {
protected:
    // Has draw called for an update of rect; what is shown then.
    Picture Update(BRect rect, std::function<void(BRect)> draw)
    {
        bool done = false;
        Locked([&] {
            fView->onDraw = [&](BRect update) {
                draw(update);
                done = true;
            };
            fView->Invalidate(rect);
        });
        EXPECT_TRUE(Becomes([&] { return done; }));
        return Locked([&] {
            fView->onDraw = nullptr;
            fView->Sync();
            return Shown();
        });
    }
    void Fill(rgb_color color)
    {
        fView->SetHighColor(color);
        fView->FillRect(fView->Bounds());
    }
};

TEST_F(UpdateTest, NothingShowsBeforeDrawReturns)
{
    Drawn([](BView&) {});
    bool sawWhite = false;
    const Picture after = Update(fView->Bounds(), [&](BRect) {
        Fill(black_color);
        fView->Sync();
        sawWhite = Shown().ExtentOf(kWhite).count == kWidth * kHeight;
    });
    EXPECT_TRUE(sawWhite);
    EXPECT_EQ(after.ExtentOf(kBlack).count, kWidth * kHeight);
}

TEST_F(UpdateTest, OnlyTheUpdateRectangleIsClearedAndShown)
{
    const BRect rect(5, 6, 20, 15);
    Drawn([](BView& v) { v.FillRect(v.Bounds()); });
    const Picture shown = Update(rect, [&](BRect update) {
        EXPECT_EQ(update, rect);
        fView->SetHighColor(rgb_color { 255, 0, 0 });
        fView->FillRect(BRect(0, 0, 39, 10));
    });
    ExpectPicture(shown, [rect](int x, int y) {
        if (!rect.Contains(BPoint(x, y)))
            return kBlack;
        return y <= 10 ? 0xff0000 : kWhite; // the view's colour below what was drawn
    });
}

TEST_F(UpdateTest, AResizedOrMovedViewDrawsIntoAllOfItself)
{
    Locked([&] { fView->onDraw = [&](BRect) { Fill(black_color); }; });
    for (const BPoint size : { BPoint(90, 20), BPoint(90, 70), BPoint(30, 30) }) {
        Locked([&] { fView->ResizeTo(size.x - 1, size.y - 1); });
        EXPECT_TRUE(Becomes([&] { return Shown().ExtentOf(kBlack).count == size.x * size.y; }));
    }
    const BRect before = Locked([&] { return fView->ConvertToScreen(fView->Bounds()); });
    Locked([&] { fView->Parent()->MoveBy(30, 10); });
    EXPECT_TRUE(Becomes([&] { return Shown().ExtentOf(kBlack).count == 30 * 30; }));
    EXPECT_TRUE(Becomes([&] { return ScreenPicture(before).At(5, 5) != kBlack; }));
}

TEST_F(UpdateTest, AViewTakenOutDrawsNothingAndPutBackDrawsAgain)
{
    const BBitmap bitmap(BRect(0, 0, 3, 3), B_RGB32);
    Locked([&] {
        EXPECT_TRUE(fView->RemoveSelf());
        fView->FillRect(fView->Bounds());
        fView->DrawBitmap(&bitmap, bitmap.Bounds());
        fView->DrawString("nowhere", BPoint(3, 3));
        fView->StrokeLine(BPoint(1, 1), BPoint(8, 7));
        fView->Sync();
        fWindow->AddChild(fView);
    });
    EXPECT_TRUE(ComesToShow(black_color));
}

} // namespace
