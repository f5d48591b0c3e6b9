// Draw(): what it draws appears at once when it ends, and only where an update was asked for.
#include "Bitmap.h"
#include "Canvas.h"

#include <atomic>

namespace {

class UpdateTest : public CanvasTest {
protected:
    // Has draw called for an update of rect and waits until it has been shown.
    void Update(BRect rect, std::function<void(BRect)> draw)
    {
        bool done = false;
        fWindow->Lock();
        fView->onDraw = [&](BRect update) {
            draw(update);
            done = true;
        };
        fView->Invalidate(rect);
        fWindow->Unlock();
        EXPECT_TRUE(WaitUntil([&] { return done; }));
        fWindow->Lock();
        fView->onDraw = nullptr;
        fView->Sync();
        fWindow->Unlock();
    }
    Picture LockedShown()
    {
        fWindow->Lock();
        const Picture picture = Shown();
        fWindow->Unlock();
        return picture;
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
    Update(fView->Bounds(), [&](BRect) {
        Fill(black_color);
        fView->Sync();
        sawWhite = Shown().ExtentOf(kWhite).count == kWidth * kHeight;
    });
    EXPECT_TRUE(sawWhite);
    EXPECT_EQ(LockedShown().ExtentOf(kBlack).count, kWidth * kHeight);
}

TEST_F(UpdateTest, OnlyTheUpdateRectangleIsClearedAndShown)
{
    const BRect rect(5, 6, 20, 15);
    Drawn([](BView& v) { v.FillRect(v.Bounds()); });
    BRect asked;
    Update(rect, [&](BRect update) {
        asked = update;
        fView->SetHighColor(255, 0, 0);
        fView->FillRect(BRect(0, 0, 39, 10));
    });
    EXPECT_EQ(asked, rect);
    ExpectPicture(LockedShown(), [rect](int x, int y) {
        if (!rect.Contains(BPoint(x, y)))
            return kBlack;
        return y <= 10 ? 0xff0000 : kWhite; // the view's colour below what was drawn
    });
}

TEST_F(UpdateTest, ATransparentViewKeepsWhatItShows)
{
    fWindow->Lock();
    fView->SetViewColor(B_TRANSPARENT_COLOR);
    fWindow->Unlock();
    Drawn([](BView& v) { v.FillRect(v.Bounds()); });
    Update(fView->Bounds(), [&](BRect) {
        fView->SetHighColor(white_color);
        fView->StrokeLine(BPoint(0, 0), BPoint(39, 0));
    });
    ExpectPicture(LockedShown(), [](int, int y) { return y == 0 ? kWhite : kBlack; });
}

TEST_F(UpdateTest, TextAndBitmapsGoIntoTheUpdateToo)
{
    BBitmap bitmap(BRect(0, 0, 3, 3), B_RGB32); // black
    const auto draw = [&](BView& v) {
        v.SetHighColor(0, 0, 255);
        v.DrawString("Ty", BPoint(2, 20));
        v.DrawBitmap(&bitmap, BPoint(30, 2));
    };
    const Picture direct = Drawn(draw);
    Drawn([](BView&) {});
    Update(fView->Bounds(), [&](BRect) { draw(*fView); });
    EXPECT_EQ(LockedShown().pixels, direct.pixels);
}

TEST_F(UpdateTest, AResizedViewDrawsIntoAllOfItself)
{
    fWindow->Lock();
    fView->onDraw = [&](BRect) { Fill(black_color); };
    fWindow->Unlock();
    for (const BPoint size : { BPoint(90, 20), BPoint(90, 70), BPoint(30, 30) }) {
        fWindow->Lock();
        fView->ResizeTo(size.x - 1, size.y - 1);
        fWindow->Unlock();
        EXPECT_TRUE(WaitUntil([&] { return Shown().ExtentOf(kBlack).count == size.x * size.y; }));
    }
}

TEST_F(UpdateTest, TheFirstStrokeOfAViewStandsOnItsColor)
{
    fWindow->Lock();
    auto* view = new BView(BRect(60, 10, 79, 29), "second", B_FOLLOW_NONE, B_WILL_DRAW);
    view->SetViewColor(255, 0, 0);
    fWindow->AddChild(view);
    view->StrokeLine(BPoint(0, 3), BPoint(19, 3));
    view->Sync();
    ExpectPicture(ScreenPicture(view->ConvertToScreen(view->Bounds())),
        [](int, int y) { return y == 3 ? kBlack : 0xff0000; });
    fWindow->Unlock();
}

TEST(DrawingState, IsKeptOutsideWindowsAndDrawingDoesNothing)
{
    BView view(BRect(0, 0, 9, 9), "alone", B_FOLLOW_NONE, B_WILL_DRAW);
    const rgb_color color { 1, 2, 3, 4 };
    view.SetHighColor(color);
    view.SetLowColor(5, 6, 7);
    view.SetViewColor(8, 9, 10);
    view.SetPenSize(4);
    view.SetDrawingMode(B_OP_OVER);
    view.SetFontSize(10);
    const BBitmap bitmap(BRect(0, 0, 3, 3), B_RGB32);
    view.FillRect(view.Bounds());
    view.DrawBitmap(&bitmap, BPoint(0, 0));
    view.DrawString("nowhere", BPoint(3, 3));
    view.StrokeLine(BPoint(1, 1), BPoint(8, 7));
    view.Sync();
    EXPECT_EQ(view.HighColor(), color);
    EXPECT_EQ(view.LowColor(), (rgb_color { 5, 6, 7 }));
    EXPECT_EQ(view.ViewColor(), (rgb_color { 8, 9, 10 }));
    EXPECT_EQ(view.PenSize(), 4);
    EXPECT_EQ(view.DrawingMode(), B_OP_OVER);
    EXPECT_EQ(view.PenLocation(), BPoint(8, 7));
    BFont font;
    view.GetFont(&font);
    EXPECT_EQ(font.Size(), 10);
}

TEST_F(UpdateTest, AViewTakenOutAndPutBackDrawsAgain)
{
    fWindow->Lock();
    EXPECT_TRUE(fView->RemoveSelf());
    fView->FillRect(fView->Bounds());
    fWindow->AddChild(fView);
    fWindow->Unlock();
    EXPECT_TRUE(WaitUntil([this] {
        Fill(black_color);
        fView->Sync();
        return Shown().ExtentOf(kBlack).count == kWidth * kHeight;
    }));
}

} // namespace
