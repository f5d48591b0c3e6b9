// Draw(): what it draws appears at once when it ends, and only where an update was asked for.
#include "Canvas.h"

namespace {

class UpdateTest : public CanvasTest {
protected:
    // Has draw called for an update of rect; what is shown then.
    std::string Update(BRect rect, const std::function<void(BRect)>& draw)
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
};

TEST_F(UpdateTest, OnlyTheUpdateRectangleIsClearedAndShownAndNothingBeforeDrawReturns)
{
    const BRect rect(5, 6, 20, 15);
    std::string before, during;
    const auto draw = [&](BRect update) {
        EXPECT_EQ(update, rect);
        fView->SetHighColor({ 255, 0, 0 });
        fView->FillRect(BRect(0, 0, 39, 10));
        fView->Sync();
        during = Shown();
    };
    before = Drawn([](BView& v) { v.FillRect(BRect(10, 0, 39, 29)); });
    EXPECT_EQ(Update(rect, draw), Expected("update, white below what was drawn"));
    EXPECT_EQ(during, before);
    Locked([&] { fView->SetViewColor(B_TRANSPARENT_COLOR); });
    before = Drawn([](BView& v) { v.FillRect(BRect(10, 0, 39, 29)); });
    EXPECT_EQ(Update(rect, draw), Expected("update of a transparent view"));
}

TEST_F(UpdateTest, AResizedOrMovedViewDrawsIntoAllOfItself)
{
    Locked([&] { fView->onDraw = [&](BRect) { fView->FillRect(fView->Bounds()); }; });
    Locked([&] { fView->SetHighColor(black_color); });
    for (const BPoint size : { BPoint(90, 20), BPoint(90, 70), BPoint(30, 30) }) {
        Locked([&] { fView->ResizeTo(size.x - 1, size.y - 1); });
        EXPECT_TRUE(Becomes([&] { return Shown() == All('#', size.x, size.y); }));
    }
    const BRect before = Locked([&] { return fView->ConvertToScreen(fView->Bounds()); });
    Locked([&] { fView->Parent()->MoveBy(30, 10); });
    EXPECT_TRUE(Becomes([&] { return Shown() == All('#', 30, 30); }));
    EXPECT_SOON(screen::PixelsIn(before)[5 * 30 + 5] != 0);
}

} // namespace
