// Draw(): what it draws appears at once when it ends, and only where an update was asked for.
#include "Canvas.h"

namespace {

using UpdateTest = CanvasTest;

TEST_F(UpdateTest, OnlyTheUpdateRectangleIsClearedAndShownAndNothingBeforeDrawReturns)
{
    const BRect rect(5, 6, 20, 15);
    for (const rgb_color& ground : { white_color, B_TRANSPARENT_COLOR }) {
        std::string during;
        Locked([&] { fView->SetViewColor(ground); });
        const auto draw = [](BView& v) {
            v.FillRect(BRect(10, 0, 39, 29));
            v.DrawString("H", BPoint(7, 29));
        };
        const std::string before = Drawn(draw);
        Locked([&] {
            fView->onDraw = [&](BRect update) {
                EXPECT_EQ(update, rect);
                fView->SetHighColor({ 255, 0, 0 });
                fView->FillRect(BRect(0, 0, 39, 10));
                fView->DrawString("H", BPoint(7, 17));
                fView->Sync();
                during = Shown();
            };
            fView->Invalidate(rect);
        });
        EXPECT_TRUE(Becomes([&] { return !during.empty(); }));
        EXPECT_EQ(during, before);
        EXPECT_EQ(Locked([&] { return fView->Sync(), Shown(); }),
            Expected(ground == white_color ? "update, white below what was drawn"
                                           : "update of a transparent view"));
        Locked([&] { fView->onDraw = nullptr; });
    }
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
