#include "ui/AnimateCursor.h"

#include "ApplicationState.h"
#include "tests/support/Log.h"
#include "tests/support/NoThreads.h"
#include "tests/support/Test.h"

#include <Application.h>

namespace {

Log* gShown = nullptr; // the first image byte of each picture

void Record()
{
    gShown->Add(std::to_string(CurrentCursor().image[4]));
}

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
    AnimateCursor cursor("LoadCursor", 3);
    cursor.SetCursor(0, Frame(1).data());
    cursor.SetCursor(2, Frame(3).data());
    cursor.SetCursor(3, Frame(4).data()); // there is no such frame
    cursor.SetCursor(-1, Frame(5).data());
    {
        const NoThreads noThreads;
        testing::internal::CaptureStderr();
        cursor.Run(0);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "Cannot start thread <LoadCursor>\n");
    }
    cursor.Run(1e6); // ends at once all the same
    cursor.Quit();
    // The last two are none: it keeps the one before.
    for (const float period : { 0.0f, 0.005f, -1.0f, NAN }) {
        Log shown;
        gShown = &shown;
        const bigtime_t start = system_time();
        SetCursorHook(Record);
        cursor.Run(period);
        cursor.Run(period); // runs already
        EXPECT_GE(find_thread("LoadCursor"), 0);
        Entries first = shown.WaitFor(21);
        EXPECT_GE(system_time() - start, period == 0 ? 19'000 : 95'000);
        first.resize(5);
        first.erase(first.begin()); // of the picture before, which is recorded at once
        EXPECT_EQ(first, (Entries { "1", "3", "1", "3" }));
        cursor.Quit();
        SetCursorHook(nullptr);
        EXPECT_LT(find_thread("LoadCursor"), 0);
        EXPECT_EQ(memcmp(CurrentCursor().image, B_HAND_CURSOR, kCursorBytes), 0);
    }
    Log shown;
    gShown = &shown;
    SetCursorHook(Record);
    {
        AnimateCursor nameless("", 1), empty("Empty", 0), idle("Idle", 1), running("Running", 1);
        nameless.Run(0);
        empty.Run(0);
        running.Run(0);
    }
    EXPECT_EQ(shown.Now().size(), 2u) << "the picture before, and at the end of one that ran";
    SetCursorHook(nullptr);
    EXPECT_LT(find_thread("Running"), 0);
}
