#include "ui/AnimateCursor.h"

#include "ApplicationState.h"
#include "tests/support/Log.h"
#include "tests/support/Test.h"

#include <Application.h>

#include <limits>

namespace {

Log* gShown = nullptr; // the first image byte of each picture

std::vector<unsigned char> Frame(unsigned char mark)
{
    std::vector<unsigned char> frame { 16, 1, 0, 0, mark };
    frame.resize(kCursorBytes);
    return frame;
}

} // namespace

TEST(AnimateCursor, ShowsTheFilledFramesInTurnAndTheHandAtTheEndWhateverThePeriod)
{
    const BApplication app("application/x-vnd.Quorvane.CursorTest");
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    AnimateCursor cursor("LoadCursor", 3);
    cursor.SetCursor(0, Frame(1).data());
    cursor.SetCursor(2, Frame(3).data());
    cursor.SetCursor(3, Frame(4).data()); // there is no such frame
    cursor.SetCursor(-1, Frame(5).data());
    cursor.Run(1e6); // ends at once all the same
    cursor.Quit();
    for (const float period :
        { 0.001f, -1.0f, kNan }) { // the last two are none: it keeps the first
        Log shown;
        gShown = &shown;
        const bigtime_t start = system_time();
        SetCursorHook([] { gShown->Add(std::to_string(CurrentCursor().image[4])); });
        cursor.Run(period);
        EXPECT_GE(find_thread("LoadCursor"), 0);
        Entries first = shown.WaitFor(21);
        EXPECT_GE(system_time() - start, 19'000);
        first.resize(5);
        first.erase(first.begin()); // of the picture before, which is recorded at once
        EXPECT_EQ(first, (Entries { "1", "3", "1", "3" }));
        cursor.Quit();
        SetCursorHook(nullptr);
        EXPECT_LT(find_thread("LoadCursor"), 0);
        EXPECT_EQ(memcmp(CurrentCursor().image, B_HAND_CURSOR, kCursorBytes), 0);
    }
}
