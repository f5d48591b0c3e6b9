#include "TestLooper.h"

#include <Autolock.h>

namespace {

// The instrumentation of a call looks into the object, which the call itself does not.
[[gnu::noinline]] __attribute__((no_sanitize("undefined"))) status_t UseDead(BLooper* looper)
{
    return looper->Lock() ? status_t { B_OK } : looper->PostMessage(1);
}

} // namespace

TEST(LooperLock, CountsAndIsTheMakersUntilRun)
{
    Log log;
    auto* looper = new TestLooper(LogTo(log));
    EXPECT_TRUE(looper->IsLocked());
    {
        const BAutolock nested(looper);
        EXPECT_TRUE(nested.IsLocked());
        EXPECT_EQ(looper->CountLocks(), 2);
    }
    looper->Run();
    EXPECT_FALSE(looper->IsLocked());
    {
        const BAutolock lock(looper);
        const BMessenger target(looper);
        KitThread other([&] {
            EXPECT_FALSE(looper->IsLocked());
            EXPECT_EQ(target.LockTargetWithTimeout(0), B_WOULD_BLOCK);
            EXPECT_EQ(target.LockTargetWithTimeout(10'000), B_TIMED_OUT);
        });
        other.Wait();
        looper->PostMessage(1);
        EXPECT_TRUE(log.Now().empty()) << "messages are handled with the lock held";
    }
    log.WaitFor(1);
    QuitNow(looper);
}

TEST(LooperLock, OfADeadLooperIsRefusedAlsoToThoseThatWaited)
{
    Log log;
    auto* looper = new TestLooper([&](TestLooper& self, BMessage*) {
        log.Add("handles");
        log.WaitFor(2);
        self.Quit();
    });
    looper->PostMessage(1);
    looper->Run();
    log.WaitFor(1);
    KitThread waiting([&] { EXPECT_FALSE(BAutolock(looper).IsLocked()); });
    AwaitWaiting(waiting.Id());
    log.Add("die");
    waiting.Wait();
    EXPECT_FALSE(BAutolock(looper).IsLocked());
    EXPECT_FALSE(BAutolock(nullptr).IsLocked());
    EXPECT_EQ(UseDead(looper), B_BAD_PORT_ID);
}

TEST(LooperLock, AThreadIsNotKilledWhileItHoldsTheLockNorWhileItWaitsForItInADestructor)
{
    Log log;
    auto* looper = new BLooper;
    looper->Run();
    std::atomic<bool> ends = false;
    const auto use = [&] {
        const BAutolock lock(looper);
        log.Add("begun");
        do
            snooze(1000); // a kill point otherwise
        while (!ends);
        log.Add("done");
    };
    struct AtItsEnd {
        const std::function<void()> use;
        ~AtItsEnd() { use(); }
    };
    KitThread holder(use);
    log.WaitFor(1);
    KitThread waiting([&] { const AtItsEnd last { use }; });
    AwaitWaiting(waiting.Id());
    KitThread killer([&] { kill_thread(waiting.Id()); });
    AwaitWaiting(killer.Id());
    KitThread other([&] { kill_thread(holder.Id()); });
    AwaitWaiting(other.Id());
    ends = true;
    killer.Wait();
    other.Wait();
    EXPECT_EQ(log.Now(), (Entries { "begun", "done", "begun", "done" }));
    QuitNow(looper);
}
