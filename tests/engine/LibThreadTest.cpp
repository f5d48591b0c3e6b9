#include "engine/LibThread.h"

#include "Recorder.h"
#include "tests/support/Test.h"

namespace {

std::atomic<long> gSteps = 0; // outlive who takes them

// Takes steps until it is killed.
struct Stepping : LibThread {
    int32 Action() override
    {
        for (;; gSteps++)
            snooze(1000);
    }
    static void WaitForAStep()
    {
        const long before = gSteps;
        while (gSteps == before)
            snooze(1000);
    }
};

TEST(LibThread, IsControlledAndKilledAndCanGoAgainAndEndsWithItsObject)
{
    const ScopedRecorder recorder;
    auto made = std::make_unique<Stepping>();
    Stepping& thread = *made;
    BMessenger* const messenger = recorder.NewMessenger();
    for (int run = 0; run < 2; run++) {
        ASSERT_EQ(thread.Go("stepping", messenger, 10, false), B_OK);
        while (thread.Status() != B_THREAD_ASLEEP)
            thread.WaitForAStep();
        EXPECT_EQ(thread.Suspend(), B_OK);
        testing::internal::CaptureStderr();
        thread.PrintToStream();
        EXPECT_EQ(thread.Resume(), B_OK);
        thread.WaitForAStep();
        EXPECT_EQ(thread.SetPriority(B_LOW_PRIORITY), 10);
        EXPECT_EQ(thread.Kill(), B_OK);
        EXPECT_EQ(find_thread("stepping"), B_NAME_NOT_FOUND);
        EXPECT_EQ(thread.Kill(), B_BAD_THREAD_ID);
        thread.PrintToStream();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "Suspended\nUnknown\n");
    }
    EXPECT_EQ(thread.Go("stepping", messenger, 10, false), B_OK);
    thread.WaitForAStep();
    made.reset();
    EXPECT_EQ(find_thread("stepping"), B_NAME_NOT_FOUND);
    EXPECT_EQ(recorder.WaitFor(0), Entries {});
}

} // namespace
