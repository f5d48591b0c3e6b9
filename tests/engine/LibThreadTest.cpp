#include "engine/LibThread.h"

#include "Recorder.h"
#include "tests/support/Test.h"

namespace {

struct Failing : LibThread {
    int32 Action() override { return -7; }
};

// Takes steps until it is killed.
struct Stepping : LibThread {
    ~Stepping() override { Kill(); }
    int32 Action() override
    {
        for (;; steps++)
            snooze(1000);
    }
    void WaitForAStep() const
    {
        const long before = steps;
        while (steps == before)
            snooze(1000);
    }

    std::atomic<long> steps { 0 };
};

TEST(LibThread, ReportsItsNameAndTheResultOfItsAction)
{
    const ScopedRecorder recorder;
    Failing failing;
    EXPECT_EQ(failing.Go("worker", recorder.NewMessenger(), 10, true), B_OK);
    const char* name = "a name longer than thirty-one bytes";
    EXPECT_EQ(failing.Go(name, recorder.NewMessenger(), 10, true), B_OK);
    EXPECT_EQ(
        recorder.WaitFor(2), (Entries { "worker: -7", "a name longer than thirty-one b: -7" }));
}

TEST(LibThread, IsControlledAndKilledAndCanGoAgain)
{
    const ScopedRecorder recorder;
    Stepping thread;
    for (int run = 0; run < 2; run++) {
        ASSERT_EQ(thread.Go("stepping", recorder.NewMessenger(), 10, false), B_OK);
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
    EXPECT_EQ(recorder.WaitFor(0), Entries {});
}

TEST(LibThread, IsDestroyedWhileItWaitsForRoomInAFullPort)
{
    auto* deaf = new Recorder; // takes no message: its loop never runs
    while (deaf->PostMessage('fill') == B_OK) { }
    {
        LibThread thread;
        ASSERT_EQ(thread.Go("reporter", new BMessenger(deaf), 10, false), B_OK);
        while (thread.Status() != B_THREAD_WAITING)
            snooze(1000);
    }
    EXPECT_EQ(find_thread("reporter"), B_NAME_NOT_FOUND);
    deaf->Quit(); // locked since it was made
}

} // namespace
